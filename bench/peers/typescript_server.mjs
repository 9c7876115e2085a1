// The least server that the official TypeScript library makes: one tool, over standard input and output.
// The MCP server's message loop is measured against it.
import { createRequire } from 'node:module';

// The library is installed once, with the client tests.
const require = createRequire(new URL('../../tests/mcp-client/package.json', import.meta.url));
const { McpServer } = require('@modelcontextprotocol/sdk/server/mcp.js');
const { StdioServerTransport } = require('@modelcontextprotocol/sdk/server/stdio.js');

const server = new McpServer({ name: 'peer', version: '1' });
server.registerTool('hello', { description: 'Says hello.' }, () => ({
  content: [{ type: 'text', text: 'hello' }],
}));
await server.connect(new StdioServerTransport());
