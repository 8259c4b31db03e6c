<?php

namespace TemplateTool\Server;

/** The other side has gone: there is nobody to talk to. */
final class Closed extends \RuntimeException
{
}
