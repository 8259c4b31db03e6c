// Projects whose times are measured, as files by their names. All have sample data and all rules.

const PROJECT = '{"data": {"*": "data.json"}, "security": true}';
const ROWS = [{ new: true, name: 'A' }, { name: 'B' }];

/** page.tpl, with 500 lines and ten includes, among so many other files. */
function page(others) {
    const section = i => `<section class="c${i}">\n<h2>{htmlspecialchars s${i}::title}</h2>\n{dynamic row${i},s${i}::rows}\n`
        + `{optional row${i}::*::new}<b>new</b>{/optional}\n<p title="{htmlspecialchars row${i}::*::name}">ü 😀</p>\n`
        + `${i < 10 ? `{include part${i}.tpl}` : ''}\n{/dynamic}\n{s${i}::text 'none'}\n</section>\n`;
    const files = {
        'template.json': PROJECT,
        'page.tpl': Array.from({ length: 55 }, (_, i) => section(i)).join(''),
        'data.json': JSON.stringify(Object.fromEntries(
            Array.from({ length: 55 }, (_, i) => [`s${i}`, { title: 'T', text: 'x', rows: ROWS }]))),
    };
    for (let i = 0; i < others; i++) {
        files[i < 10 ? `part${i}.tpl` : `pages/${i}.tpl`] = `{include part${i % 10}a.tpl}\n${'<p>{htmlspecialchars *::name}</p>\n'.repeat(20)}`;
    }
    return files;
}

/** So many pages in 50 folders, each with two of the partials parts/0.tpl, ... A ninth of the files are partials. */
function site(count) {
    const files = { 'template.json': PROJECT, 'data.json': JSON.stringify({ title: 'T', rows: ROWS }) };
    const parts = Math.floor(count / 9);
    for (let i = 0; i < parts; i++) {
        files[`parts/${i}.tpl`] = `<h1>{htmlspecialchars title}</h1>\n${'<p>{htmlspecialchars title}</p>\n'.repeat(10)}`;
    }
    for (let i = 0; i < count - parts; i++) {
        files[`pages/${i % 50}/${i}.tpl`] = `{include parts/${i % parts}.tpl}\n{include parts/${(i * 7) % parts}.tpl}\n{dynamic row,rows}\n`
            + '<p title="{htmlspecialchars row::*::name}">{optional row::*::new}new{/optional}</p>\n'.repeat(20) + '{/dynamic}\n';
    }
    return files;
}

module.exports = { page, site };
