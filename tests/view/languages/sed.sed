#!/bin/sed -f
# 検索の結果を直す。don't run it twice
1d
$!N
2,5p # the first ones, "quoted" s/a/b/
:again
s/[0-9][0-9]*:\([^:]*\)/\1/g
t again
/^::/!s/ #/ 番号/
/^$/d
y/あいう/アイウ/
/BEGIN/,/END/ {
	s/"title"/"題名"/ ; p
	n
	b again
}
$a\
it's the last line, print it
/file/I{ s|/home|/家|; h; }
w result.txt
$=
q
