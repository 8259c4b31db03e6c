<?php

// No engine: the finished page, read from a file and printed. What a request costs beside rendering.
return fn (string $pages) => fn (string $page) => fn () => file_get_contents(dirname($pages) . "/out/$page.template");
