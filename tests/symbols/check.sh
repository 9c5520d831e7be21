#!/usr/bin/env bash
# Compares what a shared library exports, or what it needs from others, with a list.
#   check.sh exports|imports LIBRARY LIST
set -euo pipefail

case $1 in
  exports) nm -DC --defined-only "$2" | cut -c20- ;;
  # Without what the compiler and the standard library's headers call on their own.
  imports) nm -DC --undefined-only "$2" | cut -c20- | sed 's/@.*//' |
    grep -vE '^(_|std::_|typeinfo|vtable)' ;;
esac | LC_ALL=C sort -u | diff -u "$3" - && exit
echo "These symbols ($1) differ from tests/symbols/$(basename "$3"). If that is meant, change the list." >&2
exit 1
