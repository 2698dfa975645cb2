#!/usr/bin/python3
"""A mail server (aiosmtpd) on a free port of the loopback that keeps what it gets.

Usage: smtp_server.py FOLDER none|starttls|tls|refuses|silent [CERTIFICATE]. Prints its port. The envelope goes to
FOLDER/envelope (sender, recipients, login, one a line), the message to FOLDER/message as it came. With TLS it asks for the login
"me", "secret".
"""
import asyncio
import logging
import ssl
import sys

from aiosmtpd.smtp import SMTP, AuthResult, LoginPassword

logging.disable()  # of those who turn away from its certificate
folder, mode = sys.argv[1], sys.argv[2]
context = None
if mode in ("starttls", "tls"):
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[3])


class Keep:
    async def handle_RCPT(self, server, session, envelope, address, options):
        if mode == "refuses":
            return "550 User unknown"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        if mode == "silent":
            await asyncio.sleep(3600)
        with open(folder + "/message", "wb") as file:
            file.write(envelope.original_content)
        login = session.auth_data.login.decode() if session.authenticated else "-"
        with open(folder + "/envelope", "w") as file:
            file.write("\n".join([session.host_name, envelope.mail_from, *envelope.rcpt_tos, login]) + "\n")
        return "250 taken"


def authenticate(server, session, envelope, mechanism, data):
    sound = isinstance(data, LoginPassword) and data.login == b"me" and data.password == b"secret"
    return AuthResult(success=sound, handled=sound, auth_data=data)


def connection():
    options = dict(decode_data=False, enable_SMTPUTF8=False)
    if mode == "starttls":
        options.update(tls_context=context, require_starttls=True)
    if context:
        options.update(authenticator=authenticate, auth_required=True, auth_require_tls=False)
    return SMTP(Keep(), **options)


async def serve():
    loop = asyncio.get_running_loop()
    server = await loop.create_server(connection, "127.0.0.1", 0, ssl=context if mode == "tls" else None)
    print(server.sockets[0].getsockname()[1], flush=True)
    await server.serve_forever()


asyncio.run(serve())
