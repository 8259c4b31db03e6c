<?php

// Compares the engine's text of a float with PHP's own conversion, for every kind of value and of precision.
// Usage: php -d extension=template.so fuzz/floats.php [VALUES]. Ends with 1 and the value at the first difference.

const BATCH = 50000;
const PRECISIONS = [-1, 0, 1, 2, 3, 5, 6, 7, 8, 10, 12, 13, 14, 15, 16, 17, 18, 20, 40];

/** The double with the bits of an integer. */
function fromBits(int $bits): float
{
    return unpack('d', pack('q', $bits))[1];
}

/** The neighbour of a double, $steps away. */
function neighbour(float $value, int $steps): float
{
    return fromBits(unpack('q', pack('d', $value))[1] + $steps);
}

$kinds = [
    'prices' => fn () => mt_rand(0, 10 ** mt_rand(1, 9)) / 100,
    'decimals of any places' => fn () => mt_rand(0, 10 ** mt_rand(1, 9)) / 10 ** mt_rand(0, 9),
    'long decimals' => fn () => (float) sprintf('%d.%0' . mt_rand(1, 9) . 'd', mt_rand(0, 10 ** mt_rand(1, 9)), mt_rand()),
    'decimals of 15 digits' => fn () => random_int(0, 10 ** 15) / 10 ** mt_rand(0, 15),
    'a step beside a decimal' => fn () => neighbour(mt_rand(1, 10 ** mt_rand(1, 9)) / 10 ** mt_rand(0, 7), mt_rand(-3, 3)),
    'sums' => fn () => mt_rand(0, 99999) / 100 + mt_rand(0, 99999) / 1000,
    'whole numbers' => fn () => (float) random_int(0, 10 ** mt_rand(1, 18)),
    'around powers of ten' => fn () => neighbour(10.0 ** mt_rand(-8, 20), mt_rand(-4, 4)),
    'halves' => fn () => (mt_rand(0, 10 ** mt_rand(1, 9)) + .5) / 10 ** mt_rand(0, 8),
    'small' => fn () => mt_rand(0, 2000) / 10 ** mt_rand(4, 9),
    'any bits' => fn () => fromBits(random_int(PHP_INT_MIN, PHP_INT_MAX)),
    'special' => fn () => [0.0, -0.0, INF, -INF, NAN, PHP_FLOAT_MIN, PHP_FLOAT_MAX, PHP_FLOAT_EPSILON, 5e-324][mt_rand(0, 8)],
];

$wanted = (int) ($argv[1] ?? 1000000);
for ($done = 0; $done < $wanted;) {
    foreach ($kinds as $kind => $make) {
        $values = [];
        for ($i = 0; $i < BATCH / count($kinds); $i++) {
            $values[] = mt_rand(0, 7) ? $make() : -$make();
        }
        foreach (PRECISIONS as $precision) {
            ini_set('precision', $precision);
            $ours = explode("\n", template("{dynamic v}{*}\n{/dynamic}", ['v' => $values], true));
            foreach ($values as $i => $value) {
                if ($ours[$i] !== (string) $value) {
                    printf("%s, precision %d: %s instead of %s\n", $kind, $precision, $ours[$i], $value);
                    exit(1);
                }
            }
            $done += count($values);
        }
    }
}
echo "$done floats, no difference\n";
