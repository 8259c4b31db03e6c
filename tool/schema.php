<?php

// Prints the JSON Schema of project files.

require __DIR__ . '/autoload.php';

echo TemplateTool\Report\Report::json(TemplateTool\Project\Project::schema()), "\n";
