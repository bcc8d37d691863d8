#!/usr/bin/env python3
"""A web server for the tests of the updater: the files of a directory, sent well or badly.

update-server.py DIRECTORY [CERTIFICATE KEY]: prints its port. The first part of a path says how the rest is sent.
"""
import http.server
import pathlib
import re
import ssl
import sys
import threading
import time
import urllib.parse

ROOT = pathlib.Path(sys.argv[1])


class Server(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def log_message(self, *words):
        with open(ROOT / "requests.log", "a", encoding="utf-8") as log:
            log.write(f"{self.path} {self.headers.get('Range', '')}\n")

    def handle(self):
        try:
            super().handle()
        except ConnectionError:  # the other side has had enough
            pass

    def send(self, status, body, headers=()):
        self.send_response(status)
        for name, value in headers:
            self.send_header(name, value)
        if not any(name == "Content-Length" for name, _ in headers):
            self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def do_GET(self):
        manner, _, name = urllib.parse.unquote(self.path).lstrip("/").partition("/")
        try:
            body = (ROOT / name).read_bytes()
        except OSError:
            return self.send(404, b"<html><script>not a file</script></html>")
        getattr(self, manner)(body, name)

    def well(self, body, name):
        part = re.fullmatch(r"bytes=(\d+)-", self.headers.get("Range", ""))
        start = int(part[1]) if part else 0
        if not part:
            return self.send(200, body)
        if start >= len(body):
            return self.send(416, b"")
        self.send(206, body[start:], [("Content-Range", f"bytes {start}-{len(body) - 1}/{len(body)}")])

    def whole(self, body, name):
        self.send(200, body)

    def broken(self, body, name):
        self.send(500, b"out of order")

    def cut(self, body, name):
        self.send(200, body[: len(body) // 2], [("Content-Length", str(len(body)))])
        self.close_connection = True

    def silent(self, body, name):
        self.send(200, body[: len(body) // 2], [("Content-Length", str(len(body)))])
        time.sleep(20)

    def mute(self, body, name):
        self.log_message()
        time.sleep(60)

    def held(self, body, name):
        """Answers when the test lets go, and says when it has."""
        self.log_message()
        while not (ROOT / "let-go").exists():
            time.sleep(0.01)
        self.well(body, name)

    def slow(self, body, name):
        self.send(200, b"", [("Content-Length", str(len(body)))])
        for at in range(0, len(body), 4000):
            self.wfile.write(body[at : at + 4000])
            time.sleep(0.02)

    def endless(self, body, name):
        self.send(200, body, [("Content-Length", str(10 * 1024**3))])
        while True:
            self.wfile.write(bytes(65536))

    def elsewhere(self, body, name):
        self.send(302, b"", [("Location", f"http://localhost.:{self.server.server_port}/well/{name}")])

    def here(self, body, name):
        self.send(302, b"", [("Location", f"/well/{name}")])


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Server)
server.daemon_threads = True
if len(sys.argv) > 2:
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[2], sys.argv[3])
    server.socket = context.wrap_socket(server.socket, server_side=True)
threading.Thread(target=server.serve_forever, daemon=True).start()
print(server.server_port, flush=True)
sys.stdin.read()
