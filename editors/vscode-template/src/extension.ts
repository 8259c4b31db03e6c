// Starts the language server, "template lsp", and hands its answers to the editor.

import * as path from 'node:path';
import { commands, ExtensionContext, ProgressLocation, window, workspace } from 'vscode';
import { LanguageClient, LanguageClientOptions, ServerOptions, TransportKind } from 'vscode-languageclient/node';

type Selector = Exclude<LanguageClientOptions['documentSelector'], undefined | readonly string[]>;

const decoder = new TextDecoder();
let client: LanguageClient | undefined;

const texts = (list: unknown) => (Array.isArray(list) ? list.filter(each => typeof each === 'string') : []);

/**
 * What the project files of the open folders call templates, besides what the language knows by itself; with the sample
 * data, which counts as it is in the editor.
 */
async function projectSelector(): Promise<Selector> {
    const selector: Selector = [];
    for (const file of await workspace.findFiles('**/template.json', '**/node_modules/**')) {
        const folder = path.posix.dirname(file.path);
        try {
            const { names, data } = JSON.parse(decoder.decode(await workspace.fs.readFile(file)));
            const files = texts(Object.values(data ?? {})).map(each => path.posix.resolve(folder, each));
            for (const pattern of [...texts(names).map(name => `${folder}/**/${name}`), ...new Set(files)]) {
                selector.push({ scheme: 'file', pattern });
            }
        } catch {
            // The server says what is wrong with it.
        }
    }
    return selector;
}

async function start(): Promise<void> {
    const settings = workspace.getConfiguration('template.server');
    const command = settings.get<string>('path') || 'template';
    const server: ServerOptions = {
        command: command.startsWith('~/') ? path.join(process.env.HOME ?? '', command.slice(2)) : command,
        args: [...settings.get<string[]>('arguments', []), 'lsp'],
        transport: TransportKind.stdio,
        options: { cwd: workspace.workspaceFolders?.[0]?.uri.fsPath },
    };
    client = new LanguageClient('template', 'Template', server, {
        documentSelector: [
            { scheme: 'file', language: 'template' },
            { scheme: 'untitled', language: 'template' },
            { scheme: 'file', pattern: '**/template.json' },
            ...await projectSelector(),
        ],
    });
    try {
        await client.start();
    } catch {
        const choice = await window.showErrorMessage(
            `"${command} lsp" couldn't be started. Install the command "template", or say in the settings where it is.`,
            'Open Settings'
        );
        if (choice) {
            await commands.executeCommand('workbench.action.openSettings', 'template.server');
        }
    }
}

async function stop(): Promise<void> {
    const running = client;
    client = undefined;
    if (running?.needsStop()) {
        await running.stop();
    }
}

export async function activate(context: ExtensionContext): Promise<void> {
    const restart = () => window.withProgress(
        { location: ProgressLocation.Window, title: 'Template: starting the language server' },
        async () => {
            await stop();
            await start();
        }
    );
    const projects = workspace.createFileSystemWatcher('**/template.json');
    let known = JSON.stringify(await projectSelector());
    const changed = async () => {
        // Other changes of a project file are the server's own matter.
        const selector = JSON.stringify(await projectSelector());
        if (known !== selector) {
            known = selector;
            await restart();
        }
    };
    context.subscriptions.push(
        commands.registerCommand('template.restart', restart),
        workspace.onDidChangeConfiguration(event => event.affectsConfiguration('template.server') && restart()),
        projects, projects.onDidChange(changed), projects.onDidCreate(changed), projects.onDidDelete(changed),
    );
    await start();
}

export const deactivate = stop;
