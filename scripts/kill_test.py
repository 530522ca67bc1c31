#!/usr/bin/env python3
"""Kills kestrelpane-cli with SIGKILL at random moments of a resave, build,
export or replace of large inputs, and checks what the kill left:

  * every output file is either its previous version or its complete new
    one (never truncated, never a mix), and every backup of a page equals
    the page as it was before;
  * after the next run into the same folders (the next start), no
    temporary file of a killed run is left anywhere.

usage: kill_test.py [KILLS] [--build DIR] [--seed N] [--keep]
KILLS defaults to 12; DIR to build/ beside this script's folder.
Exit status 0 when every kill left its files sound, 1 otherwise.
"""
import argparse
import hashlib
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

BUTTONS = 600          # lines of the big project
PICTURES = 6           # big pictures it names
PICTURE_BYTES = 2 << 20
PAGE_BYTES = 8 << 20   # the page applets are replaced in


def sha(path):
    h = hashlib.sha1()
    with open(path, 'rb') as f:
        for block in iter(lambda: f.read(1 << 20), b''):
            h.update(block)
    return h.hexdigest()


def snapshot(root):
    """relative path -> digest of every regular file below root."""
    out = {}
    for folder, _, names in os.walk(root):
        for n in names:
            p = os.path.join(folder, n)
            if os.path.isfile(p) and not os.path.islink(p):
                out[os.path.relpath(p, root)] = sha(p)
    return out


def is_temp(rel):
    return '.tmp-' in os.path.basename(rel)


def big_project(src, demo_dir):
    """Big.kpn: the demo's buttons repeated, each naming a big picture."""
    for name in os.listdir(demo_dir):
        shutil.copy(os.path.join(demo_dir, name), src)
    rnd = random.Random(7)
    for k in range(1, PICTURES + 1):
        with open(os.path.join(src, 'big%d.gif' % k), 'wb') as f:
            f.write(b'GIF89a' + rnd.randbytes(PICTURE_BYTES))
    with open(os.path.join(demo_dir, 'Demo.kpn'), 'rb') as f:
        lines = f.read().split(b'\r\n')
    head = lines[1].split(b'|')
    count = int(head[2])
    buttons = lines[2:2 + count]
    rest = lines[2 + count:]
    head[2] = str(BUTTONS).encode()
    out = [lines[0], b'|'.join(head)]
    for i in range(BUTTONS):
        f = buttons[i % count].split(b'|')
        f[0] = str(5 + (i * 7) % 400).encode()
        f[1] = str(5 + (i * 3) % 150).encode()
        # Each state's picture is copied on its own: a few big ones are
        # enough to make the copy loop long.
        pic = b'big%d.gif' % (1 + i) if i < PICTURES else b''
        f[13] = f[14] = f[15] = pic
        f[31] = f[32] = f[33] = b''
        f[4] = f[5] = f[6] = b'Label %d' % i
        f[93] = b'B%d' % (i + 1)
        out.append(b'|'.join(f))
    with open(os.path.join(src, 'Big.kpn'), 'wb') as f:
        f.write(b'\r\n'.join(out + rest))


def big_page():
    filler = (b'<p>' + b'text of the page ' * 60 + b'</p>\n') * (PAGE_BYTES // 1030)
    applet = b'<applet code="KestrelPane.class" width=10 height=10>\n</applet>\n'
    return b'<html><body>\n' + applet + filler + applet + filler + applet + b'</body></html>\n'


class Op:
    """One command, the old versions its outputs start from, and the
    complete outputs of a run that was not killed."""

    def __init__(self, name, args, out, old):
        self.name, self.args, self.out, self.old = name, args, out, old
        self.complete = {}
        self.seconds = 0.0

    def reset(self):
        """Puts the previous version of every output back; what a killed
        run left beside them stays, for the next run to clear."""
        for rel in list(snapshot(self.out)):
            if not is_temp(rel) and rel not in self.old:
                os.remove(os.path.join(self.out, rel))
        for rel, data in self.old.items():
            path = os.path.join(self.out, rel)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            tmp = path + '.reset'
            with open(tmp, 'wb') as f:
                f.write(data)
            os.replace(tmp, path)


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument('kills', nargs='?', type=int, default=12)
    here = os.path.dirname(os.path.abspath(__file__))
    ap.add_argument('--build', default=os.path.join(here, '..', 'build'))
    ap.add_argument('--seed', type=int, default=int(time.time()))
    ap.add_argument('--keep', action='store_true', help='keep the work folder')
    a = ap.parse_args()
    rnd = random.Random(a.seed)
    bindir = os.path.abspath(os.path.join(a.build, 'bin'))
    cli = os.path.join(bindir, 'kestrelpane-cli')
    if not os.access(cli, os.X_OK):
        print('kill_test: no %s (build kestrelpane-cli first)' % cli)
        return 2

    work = tempfile.mkdtemp(prefix='kp-kill-')
    failures = []
    try:
        home = os.path.join(work, 'home')
        # The program folder's files, without the build's programs.
        shutil.copytree(bindir, home, ignore=lambda d, names: [
            n for n in names if os.path.isfile(os.path.join(d, n)) and
            os.access(os.path.join(d, n), os.X_OK) and d == bindir])
        src = os.path.join(work, 'src')
        os.makedirs(src)
        big_project(src, os.path.join(here, '..', 'data', 'Projects'))
        base = [cli, '--home', home, '--settings', os.path.join(work, 's.ini')]
        big = os.path.join(src, 'Big.kpn')

        def folder(name):
            p = os.path.join(work, name)
            os.makedirs(p, exist_ok=True)
            return p

        page = big_page()
        ops = [
            Op('resave', [big, os.path.join(folder('resave'), 'Big.kpn')], folder('resave'),
               {'Big.kpn': b'old project\r\n'}),
            Op('build', [big, os.path.join(folder('build'), 'index.html'), '--yes'],
               folder('build'), {'index.html': b'old page'}),
            Op('export', [big, os.path.join(folder('export'), 'Big.kpn'), '--yes'],
               folder('export'), {'Big.kpn': b'old project\r\n'}),
            Op('replace', [big, os.path.join(folder('replace'), 'page.html'),
                           '--select', '1,2,3', '--update-files'],
               folder('replace'), {'page.html': page}),
        ]
        # The complete outputs; pictures written by a build or export have
        # old versions too, so a half-copied picture would show.
        for op in ops:
            op.reset()
            t0 = time.monotonic()
            r = subprocess.run(base + [op.name] + op.args, stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE)
            op.seconds = time.monotonic() - t0
            if r.returncode != 0:
                print('kill_test: %s failed without a kill:\n%s' % (op.name, r.stderr.decode()))
                return 1
            op.complete = snapshot(op.out)
            for rel in op.complete:
                if rel.startswith('page_backup'):
                    continue
                if rel not in op.old:
                    op.old[rel] = b'old ' + rel.encode()
            print('%-8s %6.2f s, %d files' % (op.name, op.seconds, len(op.complete)))
        old_digest = {op.name: {rel: hashlib.sha1(d).hexdigest() for rel, d in op.old.items()}
                      for op in ops}
        page_digest = hashlib.sha1(page).hexdigest()

        counts = {'mid': 0, 'temps': 0, 'swept': 0}
        for k in range(a.kills):
            op = ops[rnd.randrange(len(ops))]
            op.reset()
            before = snapshot(op.out)
            delay = rnd.uniform(0.0, op.seconds * 1.1)
            p = subprocess.Popen(base + [op.name] + op.args, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.DEVNULL)
            time.sleep(delay)
            killed = p.poll() is None
            if killed:
                p.send_signal(signal.SIGKILL)
            p.wait()
            after = snapshot(op.out)
            what = '%s kill %d at %.3f s' % (op.name, k + 1, delay)
            temps = [rel for rel in after if is_temp(rel)]
            counts['temps'] += len(temps)
            mixed = False
            for rel, digest in after.items():
                if is_temp(rel):
                    continue
                if op.name == 'replace' and rel.startswith('page_backup'):
                    if digest != page_digest:
                        failures.append('%s: backup %s is not the page as it was' % (what, rel))
                    continue
                if digest == before.get(rel):
                    continue
                if digest == old_digest[op.name].get(rel) or digest == op.complete.get(rel):
                    mixed = mixed or digest == op.complete.get(rel)
                    continue
                failures.append('%s: %s is neither its previous version nor complete' %
                                (what, rel))
            for rel in before:
                if not is_temp(rel) and rel not in after:
                    failures.append('%s: %s is gone' % (what, rel))
            if killed and (mixed or temps):
                counts['mid'] += 1
            # The next start: the same command to its end must clear what
            # the kill left and write every file complete.
            r = subprocess.run(base + [op.name] + op.args, stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE)
            if r.returncode != 0:
                failures.append('%s: the next run failed: %s' % (what, r.stderr.decode()[-300:]))
            now = snapshot(op.out)
            for tree in (op.out, home, src):
                for rel in snapshot(tree) if tree != op.out else now:
                    if is_temp(rel):
                        failures.append('%s: %s survived the next run' % (what, rel))
            counts['swept'] += len(temps)
            for rel, digest in op.complete.items():
                if op.name == 'replace' and rel.startswith('page_backup'):
                    continue
                if now.get(rel) != digest:
                    failures.append('%s: %s is not complete after the next run' % (what, rel))
            for rel in now:
                if op.name == 'replace' and rel.startswith('page_backup'):
                    os.remove(os.path.join(op.out, rel))
        print('kills %d (%d in the middle of writing), temporary files left by kills %d, '
              'all cleared by the next run; seed %d' %
              (a.kills, counts['mid'], counts['temps'], a.seed))
    finally:
        if a.keep:
            print('work folder kept: ' + work)
        else:
            shutil.rmtree(work, ignore_errors=True)
    for f in failures[:40]:
        print('FAIL ' + f)
    if failures:
        print('%d failures' % len(failures))
        return 1
    print('all files sound')
    return 0


if __name__ == '__main__':
    sys.exit(main())
