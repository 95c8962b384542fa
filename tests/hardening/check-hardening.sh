#!/bin/sh
# Checks that what was built is hardened: check-hardening.sh FOLDER, where bin and lib are. Exits with 1 and says what
# is missing.
set -eu

failed=0
complain() {
    echo "$1: $2" >&2
    failed=1
}

# has FILE WHAT OPTIONS PATTERN: whether readelf shows the pattern.
has() {
    readelf -W $3 "$1" | grep -qE "$4" || complain "$1" "$2"
}

for file in "$1/bin/petal" "$1/lib/libkel.so" "$1/lib/libKelIbmRationalRose40Import.so" "$1"/lib/petal/*.so; do
    has "$file" "not position-independent" -h 'Type: +DYN'
    has "$file" "no read-only relocations" -l ' GNU_RELRO '
    has "$file" "symbols are bound lazily" -d '\(FLAGS_1\).* NOW'
    has "$file" "no stack that is not executable" -l ' GNU_STACK .* RW +0x'
    has "$file" "no protected stack frames" --dyn-syms ' __stack_chk_fail'
    readelf -W -d "$file" | grep -q TEXTREL && complain "$file" "relocations in code"
done
has "$1/bin/petal" "an executable at a fixed place" -d '\(FLAGS_1\).* PIE'
# libkel.so calls nothing of the kind that is fortified.
for file in "$1/bin/petal" "$1/lib/libKelIbmRationalRose40Import.so"; do
    has "$file" "no fortified calls" --dyn-syms ' __[a-z]+_chk'
done

# exports FILE PATTERN: complains of what it exports beside the pattern and its own instances of the language's library.
exports() {
    other=$(nm -D -C --defined-only "$1" | sed 's/^[^ ]* . //' |
        sed -E 's/^(vtable|VTT|typeinfo|typeinfo name|guard variable) for //; s/^(virtual|non-virtual) thunk to //' |
        grep -vE "$2" | grep -vE '(^|[^a-z])std::' || true)
    [ -z "$other" ] || complain "$1" "exports $other"
}
exports "$1/lib/libKelIbmRationalRose40Import.so" '^getKelIbmRationalRose40ImportInterface$'
for part in "$1"/lib/petal/*.so; do
    exports "$part" '^petalPart$'
done
# The interface: classes named Kel..., collections of literals, and these few free functions and objects.
free='buildTypePhysicalName charSetEncoding computeNameFromPath convertText createBaseType emptyString
    equivalentConverters fullMessageCode generateMetadataOrigin getBridgeSpecification getDefaultLogicalName
    setSourceProperty severityLevel severityWord utf8ToLocale'
exports "$1/lib/libkel.so" "^_?Kel|^(HOCM|BLIB|HOLST)(::|\$)|^($(echo $free | tr ' ' '|'))(\(|\$)|^operator\+\(KelString const&"
exit $failed
