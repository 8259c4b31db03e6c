<?php

namespace TemplateTool\Files;

/** A file can't be read as a template. The message says which and why. */
final class Unreadable extends \RuntimeException
{
}
