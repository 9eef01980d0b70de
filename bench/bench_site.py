# SPDX-License-Identifier: MIT
"""The site that bench/side-by-side generates and serves with nginx on loopback."""
import contextlib
import http.client
import os
import random
import socket
import subprocess
import sys
import time

BLOCK = 1 << 20

NGINX_CONFIG = """
{user}
daemon off;
worker_processes 1;
pid {folder}/nginx.pid;
error_log {folder}/error.log;
events {{ worker_connections 512; }}
http {{
  types {{ text/html html; audio/mpeg mp3; }}
  access_log off;
  sendfile on;
  tcp_nopush on;
  keepalive_requests 1000000;
  client_body_temp_path {folder}/t1; proxy_temp_path {folder}/t2; fastcgi_temp_path {folder}/t3;
  uwsgi_temp_path {folder}/t4; scgi_temp_path {folder}/t5;
  server {{
    listen 127.0.0.1:{port};
    root {folder}/site;
    location = /counters {{ stub_status; }}
  }}
}}
"""


class Site:
    def __init__(self, folder):
        self._folder = folder
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            self.port = free.getsockname()[1]

    def make_files(self, name, count, size):
        """`count` files of `size` bytes in folder `name` of the site, no two alike; answers their paths."""
        folder = self._folder / "site" / name
        folder.mkdir(parents=True)
        paths = [folder / f"f{number:06}.mp3" for number in range(count)]
        for number, path in enumerate(paths):
            block = random.Random(number).randbytes(min(size, BLOCK))
            with open(path, "wb") as out:
                for at in range(0, size, BLOCK):
                    out.write(block[:size - at])
        return paths

    def make_page(self, folder, page, links):
        items = "\n".join(f'<li><a href="{link}">{link}</a></li>' for link in links)
        text = f"<html><body><ul>\n{items}\n</ul></body></html>\n"
        (self._folder / "site" / folder / page).write_text(text)

    @contextlib.contextmanager
    def served(self):
        config = self._folder / "nginx.conf"
        user = "user root;" if os.geteuid() == 0 else ""
        config.write_text(NGINX_CONFIG.format(folder=self._folder, port=self.port, user=user))
        command = ["/usr/sbin/nginx", "-e", self._folder / "error.log", "-c", config]
        server = subprocess.Popen(command)
        try:
            for _ in range(100):
                with contextlib.suppress(OSError):
                    self._counters()
                    break
                time.sleep(0.05)
            else:
                sys.exit("nginx did not start")
            yield
        finally:
            server.terminate()
            server.wait()

    def _counters(self):
        connection = http.client.HTTPConnection("127.0.0.1", self.port)
        connection.request("GET", "/counters")
        words = connection.getresponse().read().split()
        connection.close()
        return int(words[7]), int(words[9])

    @contextlib.contextmanager
    def counting(self):
        """Gives a list that holds, once the block is left, the connections and requests made in it."""
        counts = []
        before = self._counters()
        yield counts
        # The second look at the counters is among them.
        counts += [after - seen - 1 for after, seen in zip(self._counters(), before)]
