// Sets the entry in a configuration file given by path and writes the result to standard output.
import { readFileSync, writeFileSync } from 'node:fs';
import { applyEdits, modify } from 'jsonc-parser';

const source = readFileSync(process.argv[2], 'utf8');
const entry = { source: 'custom', command: { path: '/bin/ZeltoCLI', args: ['mcp', 'serve'] } };
const edits = modify(source, ['context_servers', 'zelto'], entry, {
  formattingOptions: { insertSpaces: true, tabSize: 2 },
});
writeFileSync(1, applyEdits(source, edits));
