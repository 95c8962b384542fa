#!/bin/sh
# Builds petal and imports a bundled model with it. Works on a bare Debian 12.
set -eu
cd "$(dirname "$0")/.."

scripts/install-packages.sh
cmake --preset release -DPETAL_TESTS=OFF >build-log.txt 2>&1 || { cat build-log.txt; exit 1; }
echo "Building (a few minutes on two cores) ..."
cmake --build --preset release --target petal >>build-log.txt 2>&1 || { tail -50 build-log.txt; exit 1; }
rm -f build-log.txt

model="${1:-examples/bookshop.mdl}"
echo "$ build/bin/petal import $model --format tree"
build/bin/petal import "$model" --format tree
echo
echo "$ build/bin/petal import $model -q -o build/try.uml -o build/try.md -o build/try.sql -o build/try.json"
build/bin/petal import "$model" -q -o build/try.uml -o build/try.md -o build/try.sql -o build/try.json
echo "$ build/bin/petal draw $model -o build/pictures"
build/bin/petal draw "$model" -o build/pictures
ls -l build/try.* | awk '{print $5 " bytes  " $9}'
find build/pictures -name '*.svg' | sort
