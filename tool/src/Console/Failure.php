<?php

namespace TemplateTool\Console;

/** Wrong usage, or data that can't be read: ends the command with this one line. */
final class Failure extends \RuntimeException
{
}
