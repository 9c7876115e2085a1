// A day of an agent, told through the official client: node story.mjs <path to ZeltoCLI>
// The program's launcher is expected to start the stand-in application, and HOME to be a private directory.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { setTimeout as sleep } from 'node:timers/promises';

import { Client } from '@modelcontextprotocol/sdk/client/index.js';
import { StdioClientTransport } from '@modelcontextprotocol/sdk/client/stdio.js';
import { EmptyResultSchema } from '@modelcontextprotocol/sdk/types.js';

const [program] = process.argv.slice(2);
const client = new Client({ name: 'zelto-story', version: '1' });
const catalogue = JSON.parse(readFileSync(new URL('../snapshots/tools.json', import.meta.url))).result;
const strayLines = [];
client.onerror = (error) => strayLines.push(error);

async function callTool(name, args = {}) {
  const { content, isError } = await client.callTool({ name, arguments: args });
  assert.equal(content.length, 1);
  assert.equal(content[0].type, 'text');
  return { text: content[0].text, isError };
}
async function succeed(name, args) {
  const { text, isError } = await callTool(name, args);
  assert.equal(isError, undefined, text);
  return JSON.parse(text);
}
async function fail(name, args) {
  const { text, isError } = await callTool(name, args);
  assert.equal(isError, true, text);
  return text;
}

async function meet() {
  await client.connect(new StdioClientTransport({ command: program, args: ['mcp', 'serve'], env: process.env }));
  assert.equal(client.getServerVersion().name, 'zelto-mcp');
  assert.deepEqual(client.getServerCapabilities(), { tools: {} });
  await client.ping();
  assert.deepEqual((await client.listTools()).tools, catalogue.tools);
  await assert.rejects(client.request({ method: 'resources/list' }, EmptyResultSchema), { code: -32601 });
}

async function start() {
  assert.match(await fail('zelto_health'), /zelto_start_server/);
  assert.equal((await succeed('zelto_start_server')).running, true);
}

async function tryRule() {
  const { id } = await succeed('zelto_create_rule', {
    triggerType: 'cron', cronExpression: '*/5 * * * *', name: 'Story / „rule“', group: 'Story',
    action: 'shellScript', shellScript: 'echo "told by $0"; echo warned >&2', scriptRunner: '/bin/sh',
    unheardOf: 'dropped before it reaches the application',
  });
  const found = (await succeed('zelto_list_rules')).filter((each) => each.id === id);
  assert.deepEqual(found.map((each) => each.name), ['Story / „rule“']);

  const { lastSeq } = await succeed('zelto_watch', { kind: 'actions', limit: 1 });
  await succeed('zelto_fire_rule', { id });
  const news = await succeed('zelto_watch', { kind: 'actions', since: lastSeq, wait: 10 });
  assert.equal(news.actions.length, 1);
  assert.equal(news.actions[0].ruleName, 'Story / „rule“');
  assert.match(news.actions[0].stdout, /^told by .*sh\n$/);
  assert.equal(news.actions[0].stderr, 'warned\n');
  assert.equal(news.lastSeq, lastSeq + 1);
  // Nothing more happens.
  const since = (await succeed('zelto_watch', { kind: 'events', limit: 1 })).lastSeq;
  const silence = await succeed('zelto_watch', { kind: 'events', since, wait: 0.2 });
  assert.deepEqual(silence, { events: [], lastSeq: since });

  await succeed('zelto_update_rule', { id, name: 'Renamed', enabled: false });
  const { name, enabled, triggerType } = await succeed('zelto_get_rule', { id });
  assert.deepEqual({ name, enabled, triggerType }, { name: 'Renamed', enabled: false, triggerType: 'cron' });
  assert.deepEqual(await succeed('zelto_delete_rule', { id }), {});
  assert.match(await fail('zelto_get_rule', { id }), /^HTTP 404: /);
}

async function stop() {
  assert.equal((await succeed('zelto_stop_server')).stopped, true);
  const deadline = Date.now() + 10_000;
  while (!(await callTool('zelto_health')).isError) {
    assert.ok(Date.now() < deadline, 'the API is still on');
    await sleep(50);
  }
}

try {
  await meet();
  await start();
  await tryRule();
  await stop();
} catch (error) {
  // The stand-in must not outlive the story.
  await client.callTool({ name: 'zelto_stop_server' }, undefined, { timeout: 2000 }).catch(() => {});
  await client.close();
  throw error;
}
const before = Date.now();
await client.close();
// The client closes the input first and sends a signal only two seconds later.
assert.ok(Date.now() - before < 1500, 'the server did not end by itself');
assert.deepEqual(strayLines, []);
