#!/bin/sh
# hardened.sh FILE...: whether programs and libraries for Linux have what cmake/Hardening.cmake asks
# for. An archive (.a) stands for the code that they are linked from.
set -eu
export LC_ALL=C
missing=0

# need WHAT COMMAND...
need() {
    what=$1
    shift
    if ! "$@" >/dev/null; then
        echo "$file: $what" >&2
        missing=1
    fi
}
says() { printf '%s\n' "$1" | grep -E "$2"; }
saysNot() { ! says "$@"; }

checkLinked() {
    headers=$(readelf -hlW "$file")
    dynamic=$(readelf -dW "$file")
    symbols=$(readelf --dyn-syms -W "$file")
    need "its addresses can be foreseen (no PIE)" says "$headers" 'Type: +DYN'
    need "no part becomes read-only after loading (no RELRO)" says "$headers" 'GNU_RELRO'
    need "its table of calls can be written to (no BIND_NOW)" says "$dynamic" 'BIND_NOW|Flags:.* NOW'
    need "the linker did not say what its stack may do" says "$headers" 'GNU_STACK'
    need "its stack can be executed" saysNot "$headers" 'GNU_STACK.* RWE'
    need "an overwritten stack stays unseen (no stack protector)" says "$symbols" '__stack_chk_fail'
    need "copies beyond a buffer stay unseen (no _FORTIFY_SOURCE)" says "$symbols" '__(mem[a-z]+|[a-z]*printf)_chk'
    case $headers in
    *X86-64*)
        need "no mark of the shadow stack (SHSTK)" says "$(readelf -nW "$file")" 'feature:.*SHSTK'
        ;;
    esac
}

checkArchive() {
    case $(readelf -hW "$file") in
    *X86-64*)
        marks=$(readelf -nW "$file")
        need "code whose targets of jumps are not marked (IBT)" \
            [ "$(says "$marks" '^File:' | wc -l)" -eq "$(says "$marks" 'feature:.*IBT' | wc -l)" ]
        ;;
    esac
}

for file; do
    case $file in
    *.a) checkArchive ;;
    *) checkLinked ;;
    esac
done
[ "$missing" -eq 0 ]
