/* The least that a line server can do: for each line on standard input, one write of a fixed reply. It is the
   floor that the MCP server's message loop is measured against. */
#include <string.h>
#include <unistd.h>

int main(void) {
  static char block[65536];
  static const char reply[] = "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{}}\n";
  ssize_t count;
  while ((count = read(STDIN_FILENO, block, sizeof block)) > 0) {
    const char* end = block + count;
    for (const char* at = block; (at = memchr(at, '\n', (size_t)(end - at))) != NULL; ++at) {
      if (write(STDOUT_FILENO, reply, sizeof reply - 1) < 0) return 1;
    }
  }
  return 0;
}
