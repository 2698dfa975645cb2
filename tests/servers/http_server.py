#!/usr/bin/python3
"""A web server on a free port of the loopback.

Usage: http_server.py FOLDER [CERTIFICATE]. Prints its port. Each request line goes to FOLDER/requests. The path decides:
/missing is 404, /slow answers never, /hangs-up closes without a word, /again/N redirects N times, /long has an endless body, all
others get "success".
"""
import http.server
import ssl
import sys
import time

folder = sys.argv[1]


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        with open(folder + "/requests", "a") as file:
            file.write(self.requestline + "\n")
        if self.path == "/slow":
            time.sleep(3600)
        if self.path == "/hangs-up":
            return
        if self.path.startswith("/again/") and self.path != "/again/0":
            self.send_response(302)
            self.send_header("Location", "/again/%d" % (int(self.path[7:]) - 1))
            self.end_headers()
            return
        self.send_response(404 if self.path == "/missing" else 200)
        self.end_headers()
        try:
            while self.path == "/long":
                self.wfile.write(b"0123456789" * 7)
                time.sleep(0.01)
        except OSError:
            return
        self.wfile.write(b"not here" if self.path == "/missing" else b"success")

    def log_message(self, *arguments):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
if len(sys.argv) > 2:
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[2])
    server.socket = context.wrap_socket(server.socket, server_side=True)
print(server.server_address[1], flush=True)
server.serve_forever()
