// A client of the language server, over the library that Visual Studio Code's own client is made of.
const { spawn } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { after } = require('node:test');
const { pathToFileURL } = require('node:url');
const protocol = require('vscode-languageserver-protocol/node');

/** The command that starts the server: the script that runs the tests sets it. */
const command = JSON.parse(process.env.TEMPLATE_COMMAND);

const processes = [];
after(() => processes.forEach(each => each.kill('SIGKILL')));

function start() {
    const server = spawn(command[0], [...command.slice(1), 'lsp'], { stdio: ['pipe', 'pipe', 'inherit'] });
    processes.push(server);
    return server;
}

/** A folder with these files, by their names. */
function folder(files) {
    const root = fs.realpathSync(fs.mkdtempSync(path.join(os.tmpdir(), 'template-lsp-')));
    process.on('exit', () => fs.rmSync(root, { recursive: true, force: true }));
    for (const [name, text] of Object.entries(files)) {
        fs.mkdirSync(path.dirname(path.join(root, name)), { recursive: true });
        fs.writeFileSync(path.join(root, name), text);
    }
    return root;
}

/** A server with a folder open. */
class Client {
    /** `files`: by name; or the path of a folder that is there. */
    static async start(files, capabilities = {}, more = {}) {
        const client = new Client();
        client.root = typeof files === 'string' ? files : folder(files);
        client.process = start();
        client.exited = new Promise(resolve => client.process.on('exit', (code, signal) => resolve(signal ?? code)));
        client.diagnostics = new Map();
        client.versions = new Map();
        client.asked = [];
        client.waiting = [];
        const connection = protocol.createProtocolConnection(client.process.stdout, client.process.stdin);
        client.connection = connection;
        connection.onNotification('textDocument/publishDiagnostics', news => {
            client.diagnostics.set(news.uri, news);
            client.waiting.splice(0).forEach(check => check());
        });
        connection.onNotification((method, parameters) => client.asked.push([method, parameters]));
        connection.onRequest((method, parameters) => {
            client.asked.push([method, parameters]);
            return null;
        });
        connection.onUnhandledProgress(parameters => client.asked.push(['$/progress', parameters]));
        connection.onError(() => {});
        connection.onClose(() => connection.dispose());
        connection.listen();
        client.initialized = await connection.sendRequest('initialize', {
            processId: process.pid,
            rootUri: null,
            capabilities,
            workspaceFolders: [{ uri: client.uri(''), name: 'test' }],
            ...more,
        });
        await connection.sendNotification('initialized', {});
        return client;
    }

    uri(name) {
        return pathToFileURL(path.join(this.root, name)).href;
    }

    request(method, name, more = {}) {
        return this.connection.sendRequest(method, { textDocument: { uri: this.uri(name) }, ...more });
    }

    notify(method, parameters) {
        return this.connection.sendNotification(method, parameters);
    }

    /** Opens a text, or the file of this name. */
    async open(name, text = fs.readFileSync(path.join(this.root, name), 'utf8')) {
        this.versions.set(name, 1);
        await this.notify('textDocument/didOpen', {
            textDocument: { uri: this.uri(name), languageId: 'template', version: 1, text },
        });
    }

    /** Changes a text as a whole, or by a list of changes. */
    async change(name, changes) {
        const version = this.versions.get(name) + 1;
        this.versions.set(name, version);
        await this.notify('textDocument/didChange', {
            textDocument: { uri: this.uri(name), version },
            contentChanges: typeof changes === 'string' ? [{ text: changes }] : changes,
        });
        return version;
    }

    close(name) {
        this.versions.delete(name);
        return this.notify('textDocument/didClose', { textDocument: { uri: this.uri(name) } });
    }

    /** The findings about an open text as it is now, or the last about another file; waits until they are as wanted. */
    async findings(name, isWanted = () => true) {
        const uri = this.uri(name);
        const version = this.versions.get(name);
        for (const until = Date.now() + 20000; Date.now() < until;) {
            const news = this.diagnostics.get(uri);
            if (news && (version === undefined || news.version === version) && isWanted(news.diagnostics)) {
                return news.diagnostics;
            }
            await new Promise(resolve => {
                this.waiting.push(resolve);
                setTimeout(resolve, 1000);
            });
        }
        throw new Error(`no such findings of ${name}: ${JSON.stringify(this.diagnostics.get(uri))}`);
    }

    async stop() {
        await this.connection.sendRequest('shutdown');
        await this.notify('exit');
        return this.exited;
    }
}

/** The text without its mark "|", and the position of the mark. */
function marked(text) {
    const offset = text.indexOf('|');
    const lines = text.slice(0, offset).split('\n');
    const position = { line: lines.length - 1, character: lines[lines.length - 1].length };
    return [text.replace('|', ''), position];
}

/** "line:character-line:character", counted from 0. */
const range = ({ start, end }) => `${start.line}:${start.character}-${end.line}:${end.character}`;

/** The processor time of a process so far, in milliseconds: the machine may be busy with other things. */
function processorTime({ pid }) {
    const [user, system] = fs.readFileSync(`/proc/${pid}/stat`, 'utf8').split(') ')[1].split(' ').slice(11, 13);
    return (Number(user) + Number(system)) * 10;
}

module.exports = { Client, folder, marked, processorTime, range, start };
