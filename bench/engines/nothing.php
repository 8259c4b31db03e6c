<?php

// No engine and no page: what a request or a process costs in any case.
return fn () => fn () => fn () => '';
