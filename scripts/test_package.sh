#!/usr/bin/env bash
# The Debian package, tested as an author meets it.
#
# Always: builds the package (scripts/package.sh), checks its contents, its
# dependencies and its desktop entry, and runs lintian, which must find no
# error (warnings are listed).
#
# Then, unless KP_PACKAGE_ROOT_TEST=0: makes a fresh Debian 12 root with
# debootstrap from the machine's own package archive, installs the package
# there with apt (which must pull everything it needs), and as a user who
# is not root: builds the installed sample project into the user's home
# (every picture and sound found), runs a browser test (its AppletTemp in
# the user's data folder), starts the designer under xvfb-run from the
# installed menu entry's command line on the sample, and checks that
# nothing under /usr was written. A machine that cannot make such a root
# says so and stops after the first part.
#
# KP_BUILD_DIR: the build folder (default build/). KP_PACKAGE_SHOT: where
# to keep the designer's screenshot (default: the build folder).
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir="${KP_BUILD_DIR:-build}"
export KP_BUILD_DIR="$build_dir"

fail() { echo "package test: FAIL: $*" >&2; exit 1; }
say() { echo "package test: $*"; }

log=$(mktemp)
if ! KP_SKIP_DEPS="${KP_SKIP_DEPS:-1}" scripts/package.sh >"$log" 2>&1; then
  tail -n 30 "$log" >&2
  rm -f "$log"
  fail "scripts/package.sh failed"
fi
deb=$(tail -n 1 "$log")
rm -f "$log"
[[ -f "$deb" ]] || fail "scripts/package.sh made no package"
say "$deb, $(stat -c %s "$deb") bytes"

# --- Contents -----------------------------------------------------------------
listing=$(dpkg-deb -c "$deb")
paths=$(awk '{print $6}' <<<"$listing" | sed 's|^\./|/|; s|/$||')
has() { grep -qxF "$1" <<<"$paths" || fail "the package lacks $1"; }
for p in /usr/bin/kestrelpane /usr/bin/kestrelpane-cli /usr/lib/kestrelpane/w2a \
         /usr/share/kestrelpane/KestrelPane.js /usr/share/kestrelpane/english_lng \
         /usr/share/kestrelpane/Help/index.htm /usr/share/kestrelpane/Tools/W2A/w2a \
         /usr/share/applications/kestrelpane.desktop /usr/share/mime/packages/kestrelpane.xml \
         /usr/share/icons/hicolor/scalable/apps/kestrelpane.svg \
         /usr/share/icons/hicolor/48x48/apps/kestrelpane.png \
         /usr/share/icons/hicolor/scalable/mimetypes/application-x-kestrelpane-project.svg \
         /usr/share/icons/hicolor/48x48/mimetypes/application-x-kestrelpane-project.png \
         /usr/share/man/man1/kestrelpane.1.gz /usr/share/man/man1/kestrelpane-cli.1.gz \
         /usr/share/doc/kestrelpane/copyright /usr/share/doc/kestrelpane/changelog.Debian.gz; do
  has "$p"
done
# Every file of the program folder's sources.
while IFS= read -r f; do has "/usr/share/kestrelpane/${f#data/}"; done < <(find data -type f | sort)
# Owned by root, and nothing writable by others.
awk '$2 != "root/root" {print; bad=1} END {exit bad}' <<<"$listing" ||
  fail "entries not owned by root/root"
awk 'substr($1,9,1) == "w" && substr($1,1,1) != "l" {print; bad=1} END {exit bad}' <<<"$listing" ||
  fail "entries writable by others"
# The converter's link resolves to the installed converter.
grep -qE '\./usr/share/kestrelpane/Tools/W2A/w2a -> \.\./\.\./\.\./\.\./lib/kestrelpane/w2a$' \
  <<<"$listing" || fail "Tools/W2A/w2a does not point to /usr/lib/kestrelpane/w2a"

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg-deb -x "$deb" "$unpacked"
# No machine code in the architecture-independent tree.
while IFS= read -r -d '' f; do
  [[ "$(head -c 4 "$f" | od -An -tx1 | tr -d ' \n')" == 7f454c46 ]] && fail "ELF file in /usr/share: $f"
done < <(find "$unpacked/usr/share" -type f -print0)
# The menu entry starts an installed program and names an installed icon.
entry="$unpacked/usr/share/applications/kestrelpane.desktop"
exec_line=$(sed -n 's/^Exec=//p' "$entry")
[[ -x "$unpacked/usr/bin/${exec_line%% *}" ]] || fail "Exec=$exec_line names no installed program"
icon=$(sed -n 's/^Icon=//p' "$entry")
[[ -f "$unpacked/usr/share/icons/hicolor/scalable/apps/$icon.svg" ]] || fail "no icon $icon"
grep -q '^MimeType=application/x-kestrelpane-project;$' "$entry" || fail "entry lacks the MIME type"
grep -q '<glob pattern="\*.kpn"/>' "$unpacked/usr/share/mime/packages/kestrelpane.xml" ||
  fail "the MIME type has no *.kpn glob"
# Every picture and sound of the sample project lies in its folder.
demo="$unpacked/usr/share/kestrelpane/Projects/Demo.kpn"
for media in $(grep -aoE '[A-Za-z0-9_]+\.(gif|jpg|au)' "$demo" | sort -u); do
  [[ -f "$unpacked/usr/share/kestrelpane/Projects/$media" ]] || fail "the sample's $media is missing"
done

# --- Dependencies -------------------------------------------------------------
depends=$(dpkg-deb -f "$deb" Depends)
for d in libqt6core6 libqt6gui6 libqt6widgets6 libsndfile1 fonts-liberation; do
  grep -qE "(^|, )$d( |,|$)" <<<"$depends" || fail "Depends lacks $d: $depends"
done
say "depends: $depends"

# --- lintian ------------------------------------------------------------------
if command -v lintian >/dev/null; then
  lint=$(lintian --fail-on error "$deb" 2>&1 | grep -v 'running with root privileges') ||
    { echo "$lint" >&2; fail "lintian found errors"; }
  say "lintian: $(grep -c '^W:' <<<"$lint" || true) warnings, no errors"
  grep '^W:' <<<"$lint" || true
else
  fail "lintian is not installed (scripts/deps.sh installs it)"
fi

# --- A fresh Debian 12 root ------------------------------------------------------
if [[ "${KP_PACKAGE_ROOT_TEST:-1}" == 0 ]]; then
  say "KP_PACKAGE_ROOT_TEST=0: no install into a fresh root; contents and dependencies checked"
  exit 0
fi
if [[ $(id -u) != 0 ]] || ! command -v debootstrap >/dev/null; then
  say "cannot make a fresh Debian 12 root here (needs root and debootstrap);" \
      "contents and dependencies checked instead"
  exit 0
fi
mirror=$(sed -n 's/^URIs: *\([^ ]*\).*/\1/p' /etc/apt/sources.list.d/*.sources 2>/dev/null |
         grep -v security | head -n 1 || true)
[[ -n "$mirror" ]] || mirror=$(awk '$1 == "deb" {print $2; exit}' /etc/apt/sources.list 2>/dev/null || true)
mirror=${mirror:-http://deb.debian.org/debian}

root=$(mktemp -d "$PWD/$build_dir/pkgroot.XXXXXX")
# mktemp's folder is private, and it becomes everyone's root folder.
chmod 755 "$root"
cleanup() {
  for m in "$root/proc" "$root/dev/pts"; do mountpoint -q "$m" && umount -l "$m"; done
  rm -rf --one-file-system "$root" "$unpacked"
}
trap cleanup EXIT
say "debootstrap bookworm from $mirror"
if ! debootstrap --variant=minbase bookworm "$root" "$mirror" >"$root.log" 2>&1; then
  tail -n 5 "$root.log" >&2
  rm -f "$root.log"
  say "cannot make a fresh Debian 12 root here (debootstrap failed, see above);" \
      "contents and dependencies checked instead"
  exit 0
fi
rm -f "$root.log"
mount -t proc proc "$root/proc"
mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts" 2>/dev/null || true
in_root() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"; }
cp "$deb" "$root/tmp/"
in_root apt-get update -qq
# The package's own dependencies come with it; the rest is for the test.
in_root apt-get install -y -qq --no-install-recommends "/tmp/$(basename "$deb")" \
  xvfb xauth x11-utils x11-apps >/dev/null || fail "apt could not install the package"
in_root useradd -m -s /bin/sh author
touch "$root/tmp/before"
sleep 1
as_author() { chroot --userspec=author:author "$root" /usr/bin/env -i HOME=/home/author \
              PATH=/usr/bin:/bin LANG=C.UTF-8 "$@"; }

# The installed sample, built into the user's home.
as_author mkdir -p /home/author/site
out=$(as_author kestrelpane-cli build /usr/share/kestrelpane/Projects/Demo.kpn \
      /home/author/site/index.html --yes 2>&1) || { echo "$out" >&2; fail "build of the sample failed"; }
grep -q "Can't copy" <<<"$out" && { echo "$out" >&2; fail "the build missed a file"; }
for media in $(grep -aoE '[A-Za-z0-9_]+\.(gif|jpg|au)' "$demo" | sort -u) KestrelPane.js index.html; do
  [[ -f "$root/home/author/site/$media" ]] || fail "the built folder lacks $media"
done
say "kestrelpane-cli build of the installed sample: every picture and sound copied"

# A browser test writes into the user's data folder.
as_author kestrelpane-cli test /usr/share/kestrelpane/Projects/Demo.kpn >/dev/null 2>&1 ||
  fail "kestrelpane-cli test failed"
[[ -f "$root/home/author/.local/share/kestrelpane/AppletTemp/Demo.htm" ]] ||
  fail "no AppletTemp/Demo.htm in the user's data folder"
say "kestrelpane-cli test: AppletTemp in ~/.local/share/kestrelpane"

# The designer, started as the menu entry starts it, on the sample.
cmd=${exec_line//%f//usr/share/kestrelpane/Projects/Demo.kpn}
as_author xvfb-run -a -s "-screen 0 1280x1024x24" sh -c \
  "$cmd & sleep 10; xwininfo -root -tree > /tmp/windows.txt; xwd -root -silent > /tmp/designer.xwd; kill \$!" \
  >/dev/null 2>&1 || true
grep -q '"Kestrel Pane' "$root/tmp/windows.txt" 2>/dev/null ||
  { cat "$root/tmp/windows.txt" >&2 2>/dev/null; fail "the designer showed no window"; }
grep -q 'Demo' "$root/tmp/windows.txt" || { cat "$root/tmp/windows.txt" >&2; fail "the designer does not show the sample"; }
[[ -f "$root/home/author/.local/share/kestrelpane/Projects/Demo.kpn" ]] ||
  fail "the user's Projects folder was not seeded with the sample"
shot="${KP_PACKAGE_SHOT:-$build_dir/package-designer.png}"
if command -v convert >/dev/null && convert "xwd:$root/tmp/designer.xwd" "$shot" 2>/dev/null; then
  say "designer started from the menu entry's command line; screenshot $shot"
else
  say "designer started from the menu entry's command line"
fi

# Nothing under /usr was written.
written=$(find "$root/usr" -newer "$root/tmp/before" -print 2>/dev/null | head -n 20)
[[ -z "$written" ]] || { echo "$written" >&2; fail "files under /usr were written"; }
say "nothing under /usr written; all checks passed"
