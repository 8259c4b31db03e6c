<?php

/*
 * One request of the soak: what ?kind= names. client.php knows what each must answer.
 */

set_include_path(__DIR__);

/** A value whose text comes from user code. */
final class Value
{
    public function __construct(private Closure $deed)
    {
    }

    public function __toString(): string
    {
        return ($this->deed)();
    }
}

/** Runs $deed in the middle of a call that holds text, rows and an open loop. */
function during(Closure $deed): void
{
    static $long = null;
    $long ??= str_repeat('literal ', 8192);
    echo strlen(template("$long{dynamic rows}{*}{htmlentities *}{/dynamic}", ['rows' => [1, new Value($deed), 2]], true)), ' bytes';
}

function fail(): never
{
    throw new LogicException('thrown');
}

function leave(): never
{
    exit('left');
}

$rows = [];
for ($i = 1; $i <= 20; $i++) {
    $rows[] = ['name' => "Lamp <$i>"] + ($i % 2 ? ['price' => $i * 1.5] : []);
}

switch ($_GET['kind'] ?? '') {
    case 'good':
        echo template('page.tpl', ['rows' => $rows]);
        break;
    case 'shop':
        require __DIR__ . '/../examples/shop/page.php';
        break;
    case 'nested':
        during(fn() => template('page.tpl', ['rows' => $rows]));
        break;
    case 'syntax':
        var_dump(template('broken.tpl', ['rows' => $rows]));
        break;
    case 'missing':
        echo template('{dynamic rows}{include missing.tpl}{/dynamic}left out', ['rows' => $rows], true);
        var_dump(template('missing.tpl', ['rows' => $rows]));
        break;
    case 'caught':
        try {
            during(fail(...));
        } catch (LogicException $e) {
            echo 'Caught: ', $e->getMessage();
        }
        break;
    case 'uncaught':
        during(fail(...));
        break;
    case 'fatal':
        during(fn() => trigger_error('fatal', E_USER_ERROR));
        break;
    case 'exit':
        during(leave(...));
        break;
    case 'fiber':
        // Never resumed: PHP ends the call when the request is over.
        (new Fiber(fn() => during(fn() => Fiber::suspend())))->start();
        echo 'suspended';
        break;
    case 'memory':
        template('{dynamic rows}{dynamic rows}{long}{/dynamic}{/dynamic}', ['rows' => $rows, 'long' => str_repeat('x', 1 << 18)], true);
        break;
    case 'memory in user code':
        during(fn() => str_repeat('x', 1 << 26));
        break;
}
