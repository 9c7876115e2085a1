# What script/bench and script/instructions give the program to do. Both set `bin`, the build directory, and `work`, an
# empty folder, before they read this; here it becomes the home folder.
# shellcheck shell=bash disable=SC2034,SC2154

export HOME=$work ZELTO_CONTROL_FILE=$work/control.json
server=
trap 'stop; rm -rf "$work"' EXIT

stop() { [ -z "$server" ] || kill "$server" 2>/dev/null || true; }

# serve KIND AMOUNT: a bench_server in place of the last one, at $url.
serve() {
  stop
  rm -f "$ZELTO_CONTROL_FILE"
  "$bin/bench/bench_server" "$work" "$@" &
  server=$!
  while [ ! -s "$ZELTO_CONTROL_FILE" ]; do sleep 0.05; done
  url=http://127.0.0.1:$(sed 's/.*"port":\([0-9]*\).*/\1/' "$ZELTO_CONTROL_FILE")
}

# requests METHOD COUNT: JSON-RPC requests, one a line.
requests() {
  awk -v method="$1" -v count="$2" \
    'BEGIN { while (count-- > 0) print "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"" method "\"}" }'
}

# settings BYTES: a configuration file of an editor, with comments and trailing commas.
settings() {
  awk -v bytes="$1" 'BEGIN {
    print "// settings\n{"
    for (i = 0; size < bytes; ++i) {
      text = "  // setting number " i "\n  \"setting." i "\": { \"value\": [" i ", \"text\", true,], },"
      size += length(text) + 1
      print text
    }
    print "}"
  }'
}

# bundle: the program as it lies in the application, at $bundled; it installs itself from there alone.
bundle() {
  bundled=$work/Zelto.app/Contents/SharedSupport/ZeltoCLI
  mkdir -p "$(dirname "$bundled")" "$work/.config/zed"
  cp "$bin/ZeltoCLI" "$bundled"
}

# compiler: the name and version of what compiled the program.
compiler() { "$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$bin/CMakeCache.txt")" --version | head -n 1; }
