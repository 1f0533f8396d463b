"""A web server on this machine that serves the files of a folder, and misbehaves under paths that begin with an underscore.

    FeedServer.py FOLDER

Prints three ports: of plain HTTP and of HTTPS at 127.0.0.1, with a certificate of its own, FOLDER/certificate.pem, and of
HTTPS at 127.0.0.2 with the same certificate, which is not for that address. Ends when its standard input does.
"""

import functools
import http.server
import os
import ssl
import subprocess
import sys
import threading
import time


class Handler(http.server.SimpleHTTPRequestHandler):
    plain_port = 0
    tls_port = 0

    def log_message(self, *arguments):
        pass

    def do_GET(self):
        misbehaviour = getattr(self, self.path[1:].split("/")[0].replace("-", "_"), None) if self.path[:2] == "/_" else None
        try:
            if misbehaviour:
                misbehaviour()
            else:
                super().do_GET()
        except (BrokenPipeError, ConnectionResetError):
            pass

    def begin(self, status=200, **headers):
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), str(value))
        self.end_headers()

    def redirect(self, url):
        self.begin(302, Location=url, Content_Length=0)

    def _redirect_to_plain(self):
        self.redirect(f"http://127.0.0.1:{self.plain_port}/feed")

    def _redirect_to_remote(self):
        self.redirect("http://ovin.example/feed")

    def _redirect_well(self):
        self.redirect("/feed")

    def _redirect_to_file(self):
        self.redirect("file:///etc/passwd")

    def _redirect_for_ever(self):
        self.redirect("/_redirect-for-ever")

    def _redirect_slowly(self):
        time.sleep(0.3)
        self.redirect("/_redirect-slowly")

    def _error(self):
        self.begin(500, Content_Length=10)
        self.wfile.write(b"0123456789")

    def _nothing_new(self):
        self.begin(204)

    def _endless(self):
        """Without a length; counts what was taken."""
        self.begin()
        sent = 0
        try:
            for _ in range(100):
                self.wfile.write(b"x" * 1024 * 1024)
                sent += 1
        finally:
            with open(os.path.join(self.directory, "sent"), "w", encoding="ascii") as file:
                file.write(str(sent))

    def _announced_too_long(self):
        self.begin(Content_Length=100 * 1024 * 1024)
        time.sleep(60)

    def _cut_off(self):
        self.begin(Content_Length=1000)
        self.wfile.write(b"x" * 500)

    def _cut_off_without_length(self):
        self.begin()
        self.wfile.write(b"x" * 500)

    def _no_answer(self):
        self.close_connection = True

    def _compressed(self):
        """Whether or not anybody asked for that."""
        self.begin(Content_Encoding="gzip", Content_Length=4)
        self.wfile.write(b"\x1f\x8b\x08\x00")

    def _slow(self):
        self.begin(Content_Length=1000)
        for _ in range(600):
            self.wfile.write(b"x")
            self.wfile.flush()
            time.sleep(0.1)

    def raw(self, text):
        """An answer that no server gives."""
        self.close_connection = True
        self.wfile.write(text)

    def flood(self, begin, part):
        """Sends the same again and again, 512 MiB at most, and tells how much was taken."""
        sent = 0
        try:
            self.raw(begin)
            for _ in range(512):
                self.wfile.write(part * (1024 * 1024 // len(part)))
                sent += 1
        finally:
            with open(os.path.join(self.directory, "sent"), "w", encoding="ascii") as file:
                file.write(str(sent))

    def _endless_headers(self):
        self.flood(b"HTTP/1.1 200 OK\r\n", b"X-Header: " + b"x" * 1012 + b"\r\n")

    def _endless_header(self):
        self.flood(b"HTTP/1.1 200 OK\r\nX-Header: ", b"x" * 1024)

    def _endless_status(self):
        self.flood(b"HTTP/1.1 200 ", b"x" * 1024)

    def _endless_chunks(self):
        self.flood(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n", b"400\r\n" + b"x" * 1024 + b"\r\n")

    def _endless_chunk_size(self):
        self.flood(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n", b"0" * 1024)

    def _endless_interim_answers(self):
        self.flood(b"", b"HTTP/1.1 103 Early Hints\r\nLink: </a>\r\n\r\n")

    def _chunk_of_nonsense(self):
        self.raw(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\nxxx")

    def _chunk_below_zero(self):
        self.raw(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n-5\r\nxxxxx\r\n0\r\n\r\n")

    def _chunks_without_end(self):
        self.raw(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nxxxxx\r\n")

    def _length_below_zero(self):
        self.raw(b"HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nxxxxx")

    def _two_lengths(self):
        self.raw(b"HTTP/1.1 200 OK\r\nContent-Length: 5\r\nContent-Length: 500\r\n\r\nxxxxx")

    def _longer_than_announced(self):
        self.raw(b"HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nxxxxxyyyyy")

    def _no_http(self):
        self.raw(b"SSH-2.0-OpenSSH_9.2\r\n")

    def _part(self):
        self.begin(206, Content_Length=5, Content_Range="bytes 0-4/5")
        self.wfile.write(b"xxxxx")

    def _log_in(self):
        self.begin(401, WWW_Authenticate='Basic realm="a"', Content_Length=0)

    def _redirect_nowhere(self):
        self.begin(302, Content_Length=0)

    def _redirect_to_garbage(self):
        self.redirect("https://[::")

    def _redirect_with_credentials(self):
        self.redirect("http://127.0.0.1@ovin.example/feed")

    def _redirect_to_tls(self):
        self.redirect(f"https://127.0.0.1:{self.tls_port}/feed")

    def _slow_headers(self):
        self.raw(b"HTTP/1.1 200 OK\r\n")
        for _ in range(600):
            self.wfile.write(b"X-Header: x\r\n")
            time.sleep(0.1)

    def _steady(self):
        self.begin(Content_Length=65536 * 6)
        for _ in range(6):
            self.wfile.write(b"x" * 65536)
            time.sleep(0.2)

    def _asked_for(self):
        """Keeps what the request says of itself."""
        with open(os.path.join(self.directory, "asked"), "w", encoding="ascii") as file:
            file.writelines(f"{name}: {value}\n" for name, value in self.headers.items())
        self.begin(Content_Length=0, Set_Cookie="a=b")


def serve(folder, address, context=None):
    handler = functools.partial(Handler, directory=folder)
    server = http.server.ThreadingHTTPServer((address, 0), handler)
    server.daemon_threads = True
    if context:
        server.socket = context.wrap_socket(server.socket, server_side=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_port


def main(folder):
    certificate, key = os.path.join(folder, "certificate.pem"), os.path.join(folder, "key.pem")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "2",
                    "-subj", "/CN=ovin.example", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out", certificate],
                   check=True, capture_output=True)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    Handler.plain_port = serve(folder, "127.0.0.1")
    Handler.tls_port = serve(folder, "127.0.0.1", context)
    print(Handler.plain_port, Handler.tls_port, serve(folder, "127.0.0.2", context), flush=True)
    sys.stdin.read()


if __name__ == "__main__":
    main(sys.argv[1])
