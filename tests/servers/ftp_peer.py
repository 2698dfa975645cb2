#!/usr/bin/python3
"""An FTP server that does one thing wrong, on a free port of the loopback.

Usage: ftp_peer.py FOLDER FAULT. Prints its port. Files that arrive go to FOLDER, every command and reply to
FOLDER/exchange.log, one a line, "C " or "S " before it. FAULT is one of the words below, or "none".
"""
import select
import socket
import sys
import threading

folder, fault = sys.argv[1], sys.argv[2]
log = open(folder + "/exchange.log", "a", buffering=1)


class Session(threading.Thread):
    def __init__(self, control):
        super().__init__(daemon=True)
        self.control = control
        self.lines = control.makefile("rb")
        self.open_data = None
        self.files = 0

    def say(self, reply):
        log.write("S " + reply + "\n")
        self.control.sendall((reply + "\r\n").encode("latin-1"))

    def keep_silent(self):
        while self.control.recv(4096):
            pass

    def run(self):
        log.write("connected\n")
        try:
            self.talk()
        except OSError:
            pass
        log.write("gone\n")
        self.control.close()

    def talk(self):
        if fault == "silent-after-connect":
            return self.keep_silent()
        if fault == "closes-at-once":
            return
        if fault == "greets-with-http":
            return self.say("HTTP/1.1 400 Bad Request")
        self.say("421 Too many users" if fault == "421-greeting" else "220 ready")
        while True:
            line = self.lines.readline()
            if not line:
                return
            command = line.decode("latin-1").strip()
            log.write("C " + command + "\n")
            word, _, rest = command.partition(" ")
            if self.answer(word.upper(), rest) == "end":
                return

    def answer(self, word, rest):
        if word == "USER":
            if fault == "silent-after-user":
                return self.keep_silent()
            self.say("331 password please")
        elif word == "PASS":
            refusals = {"421-pass": "421 Service closing", "530-pass": "530 Login incorrect."}
            self.say(refusals.get(fault, "230 logged in"))
        elif word == "PWD":
            if fault == "silent-after-login":
                return self.keep_silent()
            self.say('257 "/"')
        elif word == "CWD":
            self.say("550 No such directory." if fault == "550-cwd" else "250 changed")
        elif word == "TYPE":
            self.say("200 type set")
        elif word in ("EPRT", "PORT"):
            if word == "EPRT" and fault == "no-eprt":
                return self.say("500 what?")
            self.active(word, rest)
            self.say("200 fine")
        elif word == "EPSV":
            listener = socket.create_server(("127.0.0.1", 0))
            self.open_data = lambda: listener.accept()[0]
            self.say("229 Entering Extended Passive Mode (|||%d|)" % listener.getsockname()[1])
        elif word == "STOR":
            return self.store(rest)
        elif word == "QUIT":
            if fault == "quit-never-answered":
                return self.keep_silent()
            self.say("221 bye")
            return "end"
        else:
            self.say("502 not known here")

    def active(self, word, rest):
        if word == "EPRT":
            _, _, host, port, _ = rest.split("|")
        else:
            parts = rest.split(",")
            host, port = ".".join(parts[:4]), int(parts[4]) * 256 + int(parts[5])
        self.open_data = lambda: socket.create_connection((host, int(port)))

    def store(self, name):
        self.files += 1
        if fault == "553-stor":
            return self.say("553 Could not create file.")
        if fault == "550-second-file" and self.files == 2:
            return self.say("550 Permission denied.")
        if fault == "425-data":
            return self.say("425 Cannot open data connection.")
        self.say("150 go on")
        data = self.open_data()
        if fault == "closed-in-mid-transfer":
            data.recv(1000)
            data.close()
            return "end"
        with open(folder + "/" + name.replace("/", "_"), "wb") as file:
            while True:
                piece = data.recv(10 if fault == "slow" else 65536)
                if not piece:
                    break
                file.write(piece)
                # 100 bytes a second, for as long as the client is there
                if fault == "slow" and select.select([self.control], [], [], 0.1)[0]:
                    return "end"
        data.close()
        if fault == "226-withheld":
            return self.keep_silent()
        self.say("226 Transfer complete.")
        if fault == "hangs-up-after-file":
            return "end"


listener = socket.create_server(("127.0.0.1", 0))
listener.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 2048 if fault == "slow" else 65536)
print(listener.getsockname()[1], flush=True)
while True:
    Session(listener.accept()[0]).start()
