<?php

namespace TemplateTool\Rules\Security;

use TemplateTool\Page\Html;
use TemplateTool\Page\Scanner;

/**
 * The ways in which a page can have come to a point: for each where it stands in its HTML, and which conditions have
 * been decided on the way.
 */
final class States
{
    /** What is beyond is left out. */
    private const MOST = 24;
    private const MOST_CONDITIONS = 24;

    /** @var array<array{Html, array<string, bool>}> */
    private array $ways = [];

    /** Whether they stand under their keys: a single way needs none, and keys take time. */
    private bool $hasKeys = false;

    /** @param array<string, bool> $conditions */
    public static function of(Html $html, array $conditions = []): self
    {
        $states = new self();
        $states->ways[] = [$html, $conditions];
        return $states;
    }

    /** @return array<string, array{Html, array<string, bool>}> by key */
    public function byKey(): array
    {
        if (!$this->hasKeys) {
            $ways = [];
            foreach ($this->ways as $way) {
                $ways[$way[0]->key()] = $way;
            }
            [$this->ways, $this->hasKeys] = [$ways, true];
        }
        return $this->ways;
    }

    /** @return list<Html> */
    public function pages(): array
    {
        return array_column($this->ways, 0);
    }

    public function isEmpty(): bool
    {
        return $this->ways === [];
    }

    /** With these as well. What only one of two equal ways takes for granted is no longer known. */
    public function with(self $others): self
    {
        if (!$this->ways || !$others->ways) {
            return $this->ways ? $this : $others;
        }
        $union = new self();
        $union->ways = $this->byKey();
        $union->hasKeys = true;
        foreach ($others->byKey() as $key => [$html, $conditions]) {
            if (isset($union->ways[$key])) {
                $union->ways[$key][1] = array_intersect_assoc($union->ways[$key][1], $conditions);
            } elseif (count($union->ways) < self::MOST) {
                $union->ways[$key] = [$html, $conditions];
            }
        }
        return $union;
    }

    public function without(self $others): self
    {
        $rest = new self();
        $rest->ways = array_diff_key($this->byKey(), $others->byKey());
        $rest->hasKeys = true;
        return $rest;
    }

    /** Those in which a condition may come out like this. */
    public function assuming(string $condition, bool $holds): self
    {
        $states = new self();
        $states->hasKeys = $this->hasKeys;
        foreach ($this->ways as $key => [$html, $conditions]) {
            if (($conditions[$condition] ?? $holds) === $holds) {
                $conditions = array_slice($conditions, -self::MOST_CONDITIONS) + [$condition => $holds];
                $states->ways[$key] = [$html, $conditions];
            }
        }
        return $states;
    }

    /** Without what was decided about the elements of loops: in the next round they are others. */
    public function inNextRound(): self
    {
        $states = new self();
        $states->hasKeys = $this->hasKeys;
        foreach ($this->ways as $key => [$html, $conditions]) {
            $isPath = static fn(string $condition): bool => !str_contains($condition, '*');
            $states->ways[$key] = [$html, array_filter($conditions, $isPath, ARRAY_FILTER_USE_KEY)];
        }
        return $states;
    }

    public function read(string $text): self
    {
        return $text === '' ? $this : $this->advance(static fn(Scanner $html) => $html->read($text));
    }

    public function value(): self
    {
        return $this->advance(static fn(Scanner $html) => $html->value());
    }

    private function advance(callable $move): self
    {
        $states = new self();
        foreach ($this->ways as [$html, $conditions]) {
            $html = clone $html;
            $move($html);
            $states = $states->with(self::of($html, $conditions));
        }
        return $states;
    }
}
