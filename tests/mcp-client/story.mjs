// A day of an agent, told through the official client: node story.mjs <path to ZeltoCLI>
// The program's launcher is expected to start the stand-in application, and HOME to be a private directory.
import assert from 'node:assert/strict';
import { setTimeout as sleep } from 'node:timers/promises';

import { Client } from '@modelcontextprotocol/sdk/client/index.js';
import { StdioClientTransport } from '@modelcontextprotocol/sdk/client/stdio.js';
import { EmptyResultSchema } from '@modelcontextprotocol/sdk/types.js';

const [program] = process.argv.slice(2);
if (!program) {
  console.error('usage: node story.mjs <path to ZeltoCLI>');
  process.exit(64);
}

const client = new Client({ name: 'zelto-story', version: '1' });
const transport = new StdioClientTransport({ command: program, args: ['mcp', 'serve'], env: process.env });
const strayLines = [];
client.onerror = (error) => strayLines.push(error);

async function step(what, action) {
  try {
    const result = await action();
    console.log(`ok   ${what}`);
    return result;
  } catch (error) {
    console.error(`FAIL ${what}\n${error.stack}`);
    await client.callTool({ name: 'zelto_stop_server' }, undefined, { timeout: 2000 }).catch(() => {});
    await client.close();
    process.exit(1);
  }
}

async function callTool(name, args) {
  const { content, isError } = await client.callTool({ name, arguments: args });
  assert.equal(content.length, 1);
  assert.equal(content[0].type, 'text');
  return { text: content[0].text, isError };
}
async function succeed(name, args = {}) {
  const { text, isError } = await callTool(name, args);
  assert.equal(isError, undefined, text);
  return JSON.parse(text);
}
async function fail(name, args = {}) {
  const { text, isError } = await callTool(name, args);
  assert.equal(isError, true, text);
  return text;
}

await step('initialises', async () => {
  await client.connect(transport);
  assert.equal(client.getServerVersion().name, 'zelto-mcp');
  assert.deepEqual(client.getServerCapabilities(), { tools: {} });
});
await step('pings', () => client.ping());
await step('lists 28 tools', async () => {
  const { tools } = await client.listTools();
  assert.equal(tools.length, 28);
});
await step('is told that the API is off', async () => {
  assert.match(await fail('zelto_health'), /zelto_start_server/);
});
await step('starts the API', async () => {
  assert.equal((await succeed('zelto_start_server')).running, true);
});
const rule = await step('creates a rule', () =>
  succeed('zelto_create_rule', {
    triggerType: 'cron', cronExpression: '*/5 * * * *', name: 'Story / „rule“', group: 'Story',
    action: 'shellScript', shellScript: 'echo "told by $0"; echo warned >&2', scriptRunner: '/bin/sh',
    unheardOf: 'dropped before it reaches the application',
  }));
await step('finds it in the list', async () => {
  const found = (await succeed('zelto_list_rules')).filter((each) => each.id === rule.id);
  assert.equal(found.length, 1);
  assert.equal(found[0].name, 'Story / „rule“');
});
await step('fires it and watches its action arrive', async () => {
  const { lastSeq } = await succeed('zelto_watch', { kind: 'actions', limit: 1 });
  await succeed('zelto_fire_rule', { id: rule.id });
  const news = await succeed('zelto_watch', { kind: 'actions', since: lastSeq, wait: 10 });
  assert.equal(news.actions.length, 1);
  assert.equal(news.actions[0].ruleName, 'Story / „rule“');
  assert.match(news.actions[0].stdout, /^told by .*sh\n$/);
  assert.equal(news.actions[0].stderr, 'warned\n');
  assert.equal(news.lastSeq, lastSeq + 1);
});
await step('sees nothing new while nothing happens', async () => {
  const { lastSeq } = await succeed('zelto_watch', { kind: 'events', limit: 1 });
  const news = await succeed('zelto_watch', { kind: 'events', since: lastSeq, wait: 0.2 });
  assert.deepEqual(news, { events: [], lastSeq });
});
await step('updates it', async () => {
  await succeed('zelto_update_rule', { id: rule.id, name: 'Renamed', enabled: false });
  const changed = await succeed('zelto_get_rule', { id: rule.id });
  assert.equal(changed.name, 'Renamed');
  assert.equal(changed.enabled, false);
  assert.equal(changed.triggerType, 'cron');
});
await step('deletes it and finds it gone', async () => {
  assert.deepEqual(await succeed('zelto_delete_rule', { id: rule.id }), {});
  assert.match(await fail('zelto_get_rule', { id: rule.id }), /^HTTP 404: /);
});
await step('is told of a missing argument', async () => {
  assert.equal(await fail('zelto_rename_group'), 'zelto_rename_group needs name, newName');
});
await step('is refused a method that does not exist', () =>
  assert.rejects(client.request({ method: 'resources/list' }, EmptyResultSchema), { code: -32601 }));
await step('stops the API', async () => {
  assert.equal((await succeed('zelto_stop_server')).stopped, true);
  const deadline = Date.now() + 10_000;
  while (!(await callTool('zelto_health', {})).isError) {
    assert.ok(Date.now() < deadline, 'the API is still on');
    await sleep(50);
  }
});
await step('ends the server by closing its input', async () => {
  const before = Date.now();
  await client.close();
  // The client closes the input first and sends a signal only two seconds later.
  assert.ok(Date.now() - before < 1500, 'the server did not end by itself');
  assert.deepEqual(strayLines, []);
});
