#!/usr/bin/python3
"""vsftpd on a free port of the loopback, as whoever starts it, for "anonymous" with any password.

Usage: vsftpd.py FOLDER none|explicit|implicit [CERTIFICATE]. Prints its port. Files go to FOLDER/root/up, which a client knows as
"up". Unless it is "none" it wants TLS on both connections, and the session of the first again on the second.
"""
import os
import socket
import subprocess
import sys
import time

folder, security = sys.argv[1], sys.argv[2]
# The port is nobody else's as long as this socket has it, and may be shared with one that wants to share too, as vsftpd does.
held = socket.socket()
held.bind(("127.0.0.1", 0))
held.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
port = held.getsockname()[1]
os.makedirs(folder + "/root/up")
os.mkdir(folder + "/empty")
settings = {
    "listen": "YES", "listen_address": "127.0.0.1", "listen_port": port, "background": "NO",
    "run_as_launching_user": "YES", "seccomp_sandbox": "NO", "secure_chroot_dir": folder + "/empty",
    "anonymous_enable": "YES", "anon_root": folder + "/root", "allow_writeable_chroot": "YES", "write_enable": "YES",
    "anon_upload_enable": "YES", "anon_other_write_enable": "YES", "xferlog_enable": "NO",
    "connect_from_port_20": "NO", "pasv_address": "127.0.0.1",
}
if security != "none":
    settings.update({"ssl_enable": "YES", "allow_anon_ssl": "YES", "force_anon_logins_ssl": "YES",
                     "force_anon_data_ssl": "YES", "require_ssl_reuse": "YES", "rsa_cert_file": sys.argv[3],
                     "implicit_ssl": "YES" if security == "implicit" else "NO"})
with open(folder + "/vsftpd.conf", "w") as file:
    file.writelines("%s=%s\n" % each for each in settings.items())
# A session of TLS 1.3 can be taken up again only with a ticket, which libcurl reads too late for the data connection of a
# short file: these conversations are held to TLS 1.2.
with open(folder + "/openssl.cnf", "w") as file:
    file.write("openssl_conf = all\n[all]\nssl_conf = ssl\n[ssl]\nsystem_default = limits\n[limits]\nMaxProtocol = TLSv1.2\n")
# It goes with this process: the kernel ends it when its parent is gone.
server = subprocess.Popen(["/usr/sbin/vsftpd", folder + "/vsftpd.conf"],
                          env={**os.environ, "OPENSSL_CONF": folder + "/openssl.cnf"},
                          preexec_fn=lambda: __import__("ctypes").CDLL(None).prctl(1, 9))
while server.poll() is None:
    try:
        socket.create_connection(("127.0.0.1", port)).close()
        break
    except OSError:
        time.sleep(0.1)
print(port, flush=True)
server.wait()
