<?php

namespace Template;

/**
 * For what happens beside the page: neither PHP's warnings on the way nor a fault of the checker may be heard.
 *
 * @internal
 */
final class Quiet
{
    /** More than this isn't checked: it would take seconds. */
    private const MOST_MEMORY = 200000000;

    /** What the code returns; null when it throws. */
    public static function run(\Closure $code): mixed
    {
        set_error_handler(static fn(): bool => true);
        try {
            return $code();
        } catch (\Throwable) {
            return null;
        } finally {
            restore_error_handler();
        }
    }

    /** How many bytes of memory a check may take, so that it doesn't end the request: half of what is left. */
    public static function memory(): int
    {
        $limit = ini_parse_quantity(ini_get('memory_limit'));
        return $limit <= 0 ? self::MOST_MEMORY : min(self::MOST_MEMORY, intdiv($limit - memory_get_usage(), 2));
    }
}
