#!/usr/bin/python3
"""A sound FTP server (pyftpdlib) on a free port of the loopback, for the user "me" with the password "secret".

Usage: ftp_server.py FOLDER. Prints its port.
"""
import logging
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer

logging.basicConfig(level=logging.CRITICAL)
FTPHandler.authorizer = DummyAuthorizer()
FTPHandler.authorizer.add_user("me", "secret", sys.argv[1], perm="elradfmwMT")
FTPHandler.auth_failed_timeout = 0
server = FTPServer(("127.0.0.1", 0), FTPHandler)
print(server.address[1], flush=True)
server.serve_forever()
