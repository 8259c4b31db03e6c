<?php

$data = [];
for ($i = 0; $i < 50; $i++) {
    $data["colour$i"] = '#' . substr(md5("variable $i"), 0, 6);
}

return $data;
