<?php

namespace TemplateTool\Rules;

/**
 * A rule about what another language would mean by a tag. The first of them that finds something in a tag explains it:
 * no other rule is asked then. Scripts and style sheets look foreign by nature: plain tags there aren't shown to them.
 */
interface Habit extends TagRule
{
}
