// What the engine does in a page, tried by the page itself. browser.mjs opens it and is told the result.

import { Engine, Refused, type Request } from "../web/engine";

const parameters = new URLSearchParams(location.search);
const engine = Engine.inFolder("engine/");
const faults: string[] = [];
let passed = 0;

function expect(what: string, got: unknown, wanted: unknown): void {
  if (JSON.stringify(got) === JSON.stringify(wanted)) {
    passed++;
  } else {
    faults.push(`${what}: expected ${JSON.stringify(wanted)}, got ${JSON.stringify(got)?.slice(0, 300)}`);
  }
}

const page = (template: string, data: unknown = {}, files: Record<string, string> = {}): Request =>
  ({ files: { "page.tpl": template, ...files }, data: JSON.stringify(data) });

const script = (code: string, files: Record<string, string> = {}): Request =>
  ({ files: { "script.php": `<?php\n${code}`, ...files }, data: '{"name": "Ann"}' });

const refusal = (request: Request) => engine.run(request).then(() => "served", (error) =>
  error instanceof Refused ? error.message : `not refused: ${error}`);

const digits = Array.from({ length: 10 }, (_, i) => i);
const loops = (count: number, text: string) => "{dynamic d}".repeat(count) + text + "{/dynamic}".repeat(count);

async function tryAll(): Promise<void> {
  const begin = performance.now();
  // A page that is typed while the engine is loaded is served like any other.
  const first = engine.run(page("Hello {name}!", { name: "Ann €😀" }));
  expect("the first page", (await first).page, "Hello Ann €😀!");
  const cold = performance.now() - begin;
  const { template, php } = await engine.version();
  expect("the version", [template, php.slice(0, 4)], [parameters.get("version"), "8.2."]);

  const included = await engine.run(page("<{include parts/a.tpl}>", { a: 1 }, { "parts/a.tpl": "\n {/optional}" }));
  expect("an error in an included file", [included.page, included.stopped], [null, null]);
  expect("its place", included.findings.map(({ file, line, column, severity }) => [file, line, column, severity])[0],
    ["parts/a.tpl", 2, 2, "error"]);
  expect("its message is the engine's", included.messages.length, 1);
  expect("nothing is left of it", (await engine.run(page("{include parts/a.tpl}x"))).page, "x");
  expect("the blocks", (await engine.run(page("{a}{dynamic b}{*}{/dynamic}", { b: [1] }))).tree?.length, 2);
  const risky = page("<p title={a}>", { a: "x" });
  expect("findings of security are asked for", (await engine.run(risky)).findings.length, 0);
  expect("and given", (await engine.run({ ...risky, security: true })).findings.length > 0, true);

  expect("broken data", (await refusal({ files: { "page.tpl": "" }, data: '{"a": }' })).slice(0, 14), "data.json:1:7:");
  expect("data that is no object", (await refusal({ files: { "page.tpl": "" }, data: "1" })).slice(0, 14), "data.json:1:1:");
  expect("a name that leads out", /^Names of files/.test(await refusal(page("", {}, { "../a": "" }))), true);
  const stream = await engine.run(page("{include php://memory}"));
  expect("a stream", stream.messages, ["An include names a stream; only files of this page can be included here."]);

  // Limits; after each one the next page is there at once.
  const limits: [string, Request, RegExp, number][] = [
    ["time", page(loops(12, ""), { d: digits }), /^The page took more than 2 seconds/, 10_000],
    ["memory", page(loops(8, "0123456789"), { d: digits }), /^The page needed more than 64 MB/, 10_000],
    ["size", page(loops(5, "0123456789ab"), { d: digits }), /^The page is larger than 1 MB/, 2000],
  ];
  for (const [what, request, sentence, milliseconds] of limits) {
    const start = performance.now();
    const { page: text, stopped } = await engine.run(request);
    expect(`${what}: stopped`, [text, sentence.test(stopped ?? "")], [null, true]);
    expect(`${what}: the next page`, (await engine.run(page("{a}", { a: "next" }))).page, "next");
    expect(`${what}: soon`, performance.now() - start < milliseconds, true);
  }

  const nested = (levels: number, open: string, close: string) =>
    page(open.repeat(levels) + "x" + close.repeat(levels), { a: 1 });
  expect("1,000 levels", (await engine.run(nested(1000, "{optional a}", "{/optional}"))).page, "x");
  for (const [open, close] of [["{optional a}", "{/optional}"], ["{dynamic a}", "{/dynamic}"]]) {
    const { page: text, stopped, messages } = await engine.run(nested(20_000, open, close));
    expect(`${open} in itself`, [text, stopped, messages], [null, null, ["Blocks nested too deeply in page.tpl"]]);
  }
  const deep = await engine.run({ files: { "page.tpl": "{a}" }, data: '{"a":'.repeat(500) + "1" + "}".repeat(500) });
  expect("deep data", deep.page, "Array");

  await tryScripts();

  const abort = new AbortController();
  const kept = engine.run(page("kept"));
  const dropped = engine.run(page("dropped"), abort.signal).then(() => "ran", (error: Error) => error.name);
  abort.abort();
  expect("what nobody wants any more isn't run", await dropped, "AbortError");
  expect("what was before it is", (await kept).page, "kept");
  engine.stop();
  const again = performance.now();
  expect("another Worker", (await engine.run(page("again"))).page, "again");
  const warm = performance.now() - again;
  const start = performance.now();
  await engine.run(page("again"));
  const ready = performance.now() - start;
  times = `first result ${Math.round(cold)} ms, with another Worker ${Math.round(warm)}, ready ${Math.round(ready)}`;
}

async function tryScripts(): Promise<void> {
  const printed = await engine.run(script("echo template('a.tpl', $data), '.';", { "a.tpl": "{name}" }));
  expect("what a script prints", [printed.page, printed.messages, printed.findings], ["Ann.", [], []]);
  const late = script("register_shutdown_function(fn() => print('b')); echo 'a'; exit(1);");
  expect("and prints at its end", (await engine.run(late)).page, "ab");
  const cleared = script("echo 'a'; @ob_end_clean(); @ob_clean(); ob_start(); echo 'b'; ob_end_clean(); echo 'c';");
  expect("a buffer of its own", (await engine.run(cleared)).page, "ac");

  for (const [what, code, line, message] of [
    ["a warning", "\n  template('none.tpl', []);", 3, "Could not open file none.tpl"],
    ["an exception", "\nthrow new LogicException('oh');", 3, "Uncaught LogicException: oh"],
    ["what can't be read", "echo 1;\necho ];", 3, "Unmatched"],
    ["a fatal error", "class A {}\nclass B extends A { final function x() {} }\nclass C extends B { function x() {} }", 4, "Cannot override"],
    ["a library's exception", "\nnew Template\\Engine(['none', 1]);", 3, "Uncaught"],
    ["a file behind", "\nrequire 'gone.php';", 3, "Failed opening"],
  ] as const) {
    const { findings } = await engine.run(script(code));
    const { file, line: at, message: told = "" } = findings.at(-1) ?? {};
    expect(`${what} has its place`, [file, at, told.includes(message)], ["script.php", line, true]);
  }
  const broken = await engine.run(script("@template('a.tpl', []);", { "a.tpl": "{optional a}" }));
  expect("a template's error has its own", broken.findings.map(({ file, line }) => [file, line]), [["a.tpl", 1]]);

  for (const [what, code, sentence] of [
    ["time", "while (true);", /^The page took more than 2 seconds/],
    ["buffers", "while (ob_get_level()) @ob_end_clean();", /^The page took more than 2 seconds/],
    ["memory", "ini_set('memory_limit', '-1'); $a = str_repeat('a', 1 << 27);", /^The page needed more than 64 MB/],
    ["size", "echo str_repeat('a', 1 << 21);", /^The page is larger than 1 MB/],
  ] as const) {
    const { page: text, stopped } = await engine.run(script(code));
    expect(`a script's ${what}`, [text, sentence.test(stopped ?? "")], [null, true]);
  }
  const network = `$results = [@file_get_contents('http://127.0.0.1/'), @fsockopen('127.0.0.1', 80), @stream_socket_client('tcp://127.0.0.1:80')];
    echo count(array_filter($results));`;
  expect("a script has no network", (await engine.run(script(network))).page, "0");
  await engine.run(script("file_put_contents('/request.php', '<?php echo 1;'); symlink('/', 'all'); mkdir('x', 0); chmod('/page', 0);"));
  expect("what a script does to the engine is gone", (await engine.run(page("{a}", { a: "well" }))).page, "well");
}

let times = "";
tryAll()
  .catch((error) => faults.push(`the page failed: ${error.stack}`))
  .then(() => JSON.stringify({ passed, faults, times }))
  .then((body) => fetch(parameters.get("report")!, { method: "POST", mode: "no-cors", body }));
