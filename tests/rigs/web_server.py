"""A web server with every bad habit, one a path. Writes its port to a file, and ends with the program that started it.

usage: web_server.py port-file [certificate key]    with them it speaks TLS
"""
import ctypes
import gzip
import os
import signal
import socket
import ssl
import struct
import sys
import threading
import time
import urllib.parse


def answer(status, body=b"", headers=()):
    lines = [f"HTTP/1.1 {status} Whatever", f"Content-Length: {len(body)}", "Connection: close", *headers]
    return "\r\n".join(lines).encode() + b"\r\n\r\n" + body


def manifest(size):
    """One that offers version 9.0, so many bytes long."""
    text = b'{"latestVersion":"9.0","downloadUrl":"https://host.example/x","releaseNotes":"new"}'
    return answer(200, text.ljust(size))


def redirect(target, status=302):
    return answer(status, b"moved", [f"Location: {target}"])


def redirect_chain(hops):
    return redirect(f"/redirect/{hops - 1}") if hops > 0 else answer(200, b"arrived")


def endless(connection, head, piece, pause):
    connection.sendall(head)
    while True:
        connection.sendall(piece)
        time.sleep(pause)


def send_then_reset(connection):
    connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nhalf")
    time.sleep(0.05)  # else the reset overtakes what was sent
    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))


CHUNKED = b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
CHUNK = b"4000\r\n" + b"x" * 0x4000 + b"\r\n"

FIXED = {
    "/hello": lambda: answer(200, b"hello"),
    "/not-modified": lambda: b"HTTP/1.1 304 Not Modified\r\nLocation: /hello\r\nConnection: close\r\n\r\n",
    "/no-content": lambda: b"HTTP/1.1 204 No Content\r\nConnection: close\r\n\r\n",
    "/loop": lambda: redirect("/loop"),
    "/nowhere": lambda: answer(302, b"moved"),
    "/short": lambda: b"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly this",
    "/long": lambda: b"HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello and more",
    "/chunked": lambda: CHUNKED + b"5\r\nhello\r\n0\r\n\r\n",
    "/bad-chunk": lambda: CHUNKED + b"zz\r\nhello\r\n",
    "/bomb": lambda: answer(200, gzip.compress(b"0" * 20_000_000), ["Content-Encoding: gzip"]),
    "/no-http": lambda: b"hello, I am something else\r\n",
    "/nothing": lambda: b"",
    "/cookie": lambda: redirect("/echo").replace(b"\r\n", b"\r\nSet-Cookie: a=b; Path=/\r\n", 1),
}
WITH_NUMBER = {
    "/body/": lambda n: answer(200, b"x" * n),
    "/status/": lambda n: answer(n, b"whatever"),
    "/redirect/": redirect_chain,
    "/manifest/": manifest,
}
BY_HAND = {
    "/endless": lambda c: endless(c, CHUNKED, CHUNK, 0.001),
    "/endless-headers": lambda c: endless(c, b"HTTP/1.1 200 OK\r\n", b"X-More: " + b"y" * 1000 + b"\r\n", 0),
    "/drip": lambda c: endless(c, CHUNKED, b"1\r\nx\r\n", 0.05),
    "/slow-redirects": lambda c: (time.sleep(0.1), c.sendall(redirect("/slow-redirects"))),
    "/silent": lambda c: c.recv(1),
    "/reset": send_then_reset,
}


def serve(connection, request):
    path, _, query = request.split(b" ", 2)[1].decode().partition("?")
    prefix = path[: path.rfind("/") + 1]
    if path in BY_HAND:
        BY_HAND[path](connection)
    elif path in FIXED:
        connection.sendall(FIXED[path]())
    elif path == "/to":
        connection.sendall(redirect(urllib.parse.unquote(query)))
    elif prefix == "/to/":
        connection.sendall(redirect(query, path[len(prefix):]))
    elif prefix in WITH_NUMBER:
        connection.sendall(WITH_NUMBER[prefix](int(path[len(prefix):])))
    elif path.startswith("/echo"):
        connection.sendall(answer(200, request))
    else:
        connection.sendall(answer(404, b"no such page"))


def handle(connection, context):
    try:
        if context:
            connection = context.wrap_socket(connection, server_side=True)
        request = b""
        while b"\r\n\r\n" not in request:
            received = connection.recv(65536)
            if not received:
                return
            request += received
            if not request[:1].isupper():
                connection.sendall(answer(400, b"what?"))
                return
        serve(connection, request)
    except OSError:
        pass  # the client has had enough
    finally:
        connection.close()


def accept_all(listener, context):
    while True:
        connection, _ = listener.accept()
        threading.Thread(target=handle, args=(connection, context), daemon=True).start()


def main():
    ctypes.CDLL(None).prctl(1, signal.SIGKILL)  # 1: PR_SET_PDEATHSIG
    context = None
    if len(sys.argv) > 3:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(sys.argv[2], sys.argv[3])
    listener = socket.create_server(("127.0.0.1", 0), backlog=64)
    with open(sys.argv[1] + ".new", "w") as file:
        file.write(str(listener.getsockname()[1]))
    os.rename(sys.argv[1] + ".new", sys.argv[1])
    accept_all(listener, context)


main()
