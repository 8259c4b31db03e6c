<?php

namespace TemplateTool\Rules\Data;

/** Stands for an array that no path leads into. */
final class Closed
{
}
