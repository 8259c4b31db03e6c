// node tokens.mjs FILE...
// Prints for each script where its texts, comments and regular expressions stand, as a parser sees them:
// {FILE: [[kind, beginning, end], ...]} in bytes, in order; what is in none of them is code.
import { readFileSync } from 'node:fs';
import { tokenizer } from 'acorn';

const kinds = { string: 'quoted', template: 'template literal', regexp: 'regular expression' };
const files = {};
for (const file of process.argv.slice(2)) {
    // One character a byte, so that places are bytes; letters of other scripts stand in texts and comments only.
    const tokens = [];
    const onComment = (isBlock, text, start, end) => tokens.push(['comment', start, end]);
    for (const { type, start, end } of tokenizer(readFileSync(file, 'latin1'), { ecmaVersion: 'latest', onComment })) {
        if (kinds[type.label]) {
            tokens.push([kinds[type.label], start, end]);
        }
    }
    files[file] = tokens.sort((a, b) => a[1] - b[1]);
}
console.log(JSON.stringify(files));
