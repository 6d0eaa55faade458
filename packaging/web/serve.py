"""Serves build/web/site, which is told once it can be reached, until it is interrupted or ended."""
import errno
import functools
import http.server
import signal
import sys

port = int(sys.argv[1])
handler = functools.partial(http.server.SimpleHTTPRequestHandler, directory="build/web/site")
try:
    server = http.server.ThreadingHTTPServer(("127.0.0.1", port), handler)
except OSError as error:
    if error.errno != errno.EADDRINUSE:
        raise
    sys.exit(f"Another program uses port {port} of this machine. "
             f"End it, or take another port: packaging/web/serve {port + 1}")


def end(*_):
    sys.exit(0)


signal.signal(signal.SIGINT, end)
signal.signal(signal.SIGTERM, end)
print(f"The game is at http://localhost:{server.server_port}/ until you press Ctrl C.", file=sys.stderr, flush=True)
server.serve_forever()
