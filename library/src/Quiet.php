<?php

namespace Template;

/**
 * For what happens beside the page: neither PHP's warnings on the way nor a fault of the checker may be heard.
 *
 * @internal
 */
final class Quiet
{
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
}
