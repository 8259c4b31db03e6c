<?php

namespace TemplateTool\Needs;

/** What templates want from one place in their data: the top, a value under a key, or the elements of a list. */
final class Need
{
    /** A step of a path from a list to its elements. No key of a reference holds this byte. */
    public const ELEMENT = "\0*";

    /** Printed by a plain tag, or as a loop's element by an escaping one: anything but arrays will do. */
    public bool $isText = false;

    /** Printed by an escaping tag outside of loops: only strings will do. */
    public bool $isString = false;

    /** Asked whether it is true. */
    public bool $isFlag = false;

    /** The name of a file that is included. */
    public bool $isFile = false;

    /** Walked by a loop whose keys are printed. */
    public bool $hasKeys = false;

    /** Whether it has to be there whenever what is around it is. */
    public bool $isRequired = false;

    /** Whether it is used somewhere without a question whether it is true: then it can't be false, or the like. */
    public bool $isBare = false;

    /** @var array<string, true> the texts that it is compared with */
    public array $compared = [];

    /** @var array<string, true> the keys that are compared, of a list or map */
    public array $keys = [];

    /** @var array<string, Need> by key */
    public array $children = [];

    /** What is wanted from each element; null when no loop walks it. */
    public ?Need $element = null;

    /** @var array<string, Rule> what has to be there at times; paths in it count from here */
    public array $rules = [];

    /** @var array<string, true> where it is used, as "file:line" */
    public array $places = [];

    /** @param list<string> $path from here */
    public function at(array $path): self
    {
        $need = $this;
        foreach ($path as $step) {
            if ($step === self::ELEMENT) {
                $need = $need->element ??= new self();
            } else {
                $need = $need->children[$step] ??= new self();
            }
        }
        return $need;
    }

    /** Brings into order what could only be said of all uses together. */
    public function settle(): void
    {
        $this->rules = array_filter($this->rules, fn(Rule $rule): bool =>
            array_filter($rule->alternatives, $this->isThere(...)) === []);
        // What only numbers lead into is a list.
        if ($this->children && array_filter(array_keys($this->children), static fn($key): bool => !is_int($key) || $key < 0) === []) {
            $this->element ??= new self();
        }
        // A loop over a map walks its element "num".
        $keys = array_filter(array_keys($this->children), is_string(...));
        if ($this->element && $keys) {
            $list = $this->children['num'] ??= new self();
            $list->element = $this->element;
            [$list->hasKeys, $list->keys, $list->isBare] = [$this->hasKeys, $this->keys, $this->isBare];
            $list->isRequired = true;
            [$this->element, $this->hasKeys, $this->keys] = [null, false, []];
        }
        foreach ([...array_values($this->children), ...array_filter([$this->element])] as $inner) {
            $inner->settle();
        }
    }

    /** @return ?bool whether it is a map; null when it may as well be a list */
    public function isMap(): ?bool
    {
        $hasNames = array_filter(array_keys($this->keys), is_string(...)) !== [];
        return $this->element === null ? $this->children !== [] : ($hasNames ? true : ($this->hasKeys ? null : false));
    }

    /** Whether all steps of a path lead to something that has to be there. */
    private function isThere(array $path): bool
    {
        $need = $this;
        foreach ($path as $step) {
            $need = $step === self::ELEMENT ? $need->element : $need->children[$step];
            if ($step !== self::ELEMENT && !$need->isRequired) {
                return false;
            }
        }
        return true;
    }
}
