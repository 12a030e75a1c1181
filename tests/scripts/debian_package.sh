#!/usr/bin/env bash
# The Debian package, packed by CPack from the build's own binaries: it holds
# the program and its files where the file-system hierarchy wants them and
# nothing else of the build (no tests, no benchmarks), it names the engine and
# Qt's plugins that are loaded without being linked, lintian finds no error in
# it, and its command, run through its link in /usr/bin, finds its modules and
# report project in its real folder.
# Run with the build folder and the project's version.
set -euo pipefail
build=$1
version=$2
fail() { echo "FAIL: $*"; exit 1; }
for tool in cpack dpkg-deb dpkg-shlibdeps fakeroot lintian desktop-file-validate appstreamcli isql-fb; do
  if ! command -v "$tool" >/dev/null; then
    echo "SKIP: $tool is missing (scripts/install-deps.sh --with-packaging installs it)"
    exit 77
  fi
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$build" && cpack -B "$work/out" >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log"; fail "cpack failed"; }
package="$work/out/quillo3_${version}-1_amd64.deb"
[ -f "$package" ] || fail "no $(basename "$package") among: $(ls "$work/out")"

expected="./usr/bin/quillo3 -> ../lib/quillo3/quillo3
./usr/bin/quillo3-genera-azienda -> ../lib/quillo3/quillo3-genera-azienda
./usr/lib/quillo3/Documenti.rav
./usr/lib/quillo3/libQuillo3Admin.so
./usr/lib/quillo3/libQuillo3Core.so
./usr/lib/quillo3/libQuillo3Impl.so
./usr/lib/quillo3/libQuillo3Report.so
./usr/lib/quillo3/libQuillo3ReportWidgets.so
./usr/lib/quillo3/modules/Attivita.so
./usr/lib/quillo3/modules/Documenti.so
./usr/lib/quillo3/quillo3
./usr/lib/quillo3/quillo3-genera-azienda
./usr/share/applications/quillo3.desktop
./usr/share/doc/quillo3/changelog.Debian.gz
./usr/share/doc/quillo3/copyright
./usr/share/icons/hicolor/scalable/apps/quillo3.svg
./usr/share/man/man1/quillo3-genera-azienda.1.gz
./usr/share/man/man1/quillo3.1.gz
./usr/share/metainfo/quillo3.metainfo.xml"
contents=$(dpkg-deb -c "$package")
files=$(awk '$1 !~ /^d/ { $1 = $2 = $3 = $4 = $5 = ""; sub(/^ +/, ""); print }' <<<"$contents" | sort)
if [ "$files" != "$expected" ]; then
  diff <(echo "$expected") <(echo "$files") || true
  fail "the package's files differ from the expected list (< expected, > packed)"
fi
! grep -E 'tst_|bench_|moduli-prova|q3_test|\.fdb' <<<"$contents" || fail "the package holds files of the tests or benchmarks"
echo "PASS: contents"

depends=$(dpkg-deb -f "$package" Depends)
for needed in firebird3.0-server-core libqt6sql6-ibase libqt6gui6 libfbclient2 libqt6widgets6; do
  grep -qE "(^|, )$needed( |,|$)" <<<"$depends" || fail "Depends lacks $needed: $depends"
done
echo "PASS: dependencies"

report=$(lintian "$package" 2>/dev/null) || true
[ -z "$report" ] || echo "$report"
! grep -q '^E: ' <<<"$report" || fail "lintian reports errors"
echo "PASS: lintian"

dpkg-deb -x "$package" "$work/root"
# The Debian changelog and the AppStream metadata name the version packed.
changelog=$(gzip -dc "$work/root/usr/share/doc/quillo3/changelog.Debian.gz" | sed -n 1p)
[[ "$changelog" == "quillo3 (${version}-1) "* ]] || fail "the changelog's last entry is not ${version}-1: $changelog"
grep -q "<release version=\"${version}\"" "$work/root/usr/share/metainfo/quillo3.metainfo.xml" \
  || fail "the AppStream metadata has no release ${version}"
echo "PASS: version"

# The menu entry and the AppStream metadata as their own validators see them.
desktop-file-validate "$work/root/usr/share/applications/quillo3.desktop" || fail "the desktop entry is not valid"
appstream=$(appstreamcli validate --no-net "$work/root/usr/share/metainfo/quillo3.metainfo.xml" 2>&1) || true
! grep -q '^E: ' <<<"$appstream" || fail "the AppStream metadata has errors: $appstream"
echo "PASS: desktop entry and AppStream metadata"

# Unpacked, the command on the path resolves its real folder through its link:
# the headless start loads the modules from there, whose upgrades make their tables.
printf 'Prova.pacchetto\n' >"$work/password"
messages=$(XDG_CONFIG_HOME="$work" XDG_DATA_HOME="$work" "$work/root/usr/bin/quillo3" --headless \
  --database "$work/prova.fdb" --user admin --password-file "$work/password" 2>&1) \
  || fail "the headless start failed: $messages"
! grep -q 'Impossibile' <<<"$messages" || fail "the module misses a file: $messages"
tables=$(echo "select rdb\$relation_name from rdb\$relations where rdb\$relation_name in ('FATT_VEND', 'PROMEMORIA');" \
  | isql-fb -q "$work/prova.fdb" 2>&1)
grep -q FATT_VEND <<<"$tables" || fail "the module's tables are missing: the module was not loaded ($tables)"
grep -q PROMEMORIA <<<"$tables" || fail "the activities module's table is missing: it was not loaded ($tables)"
echo "PASS: the installed command finds its modules"
