#!/usr/bin/python3
"""A server of the APRS network on a free port of the loopback.

Usage: aprs_server.py FOLDER [silent]. Prints its port. Greets, answers a login with "# logresp CALL verified" unless it is silent,
and writes all that it hears to FOLDER/heard.
"""
import socketserver
import sys

folder, silent = sys.argv[1], len(sys.argv) > 2


class Session(socketserver.StreamRequestHandler):
    def handle(self):
        self.wfile.write(b"# aprsc 2.1.5\r\n")
        for line in self.rfile:
            with open(folder + "/heard", "ab") as file:
                file.write(line)
            if line.startswith(b"user ") and not silent:
                self.wfile.write(b"# logresp " + line.split()[1] + b" verified, server TEST\r\n")


with socketserver.ThreadingTCPServer(("127.0.0.1", 0), Session) as server:
    server.daemon_threads = True
    print(server.server_address[1], flush=True)
    server.serve_forever()
