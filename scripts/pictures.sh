# shellcheck shell=bash
# What the scripts that take pictures share; sourced, never run, after lib.sh.

# make_picture_tree FOLDER: small files in several code sets, with hits for 灯台.
make_picture_tree() {
    local tree=$1
    mkdir -p "$tree/光" "$tree/日誌"
    cat >"$tree/光/distance.py" <<'TEXT'
import math

# 灯台の光が届く距離（海里）を求める
def distance(height, eye=1.5):
    """灯台の高さと目の高さは、どちらもメートル"""
    if height < 0:
        raise ValueError("高さが負です")
    return 2.08 * (math.sqrt(height) + math.sqrt(eye))


print("灯台から", round(distance(49), 1), "海里先まで")
TEXT
    sed 's/$/\r/' <<'TEXT' | iconv -f UTF-8 -t CP932 >"$tree/光/lamp.cpp"
// 灯台の明かりを決まった間隔で点滅させる
#include "lamp.h"

void Lamp::blink()
{
    for (int i = 0; i < 3; ++i) { /* 長く一回、短く二回 */
        light(i == 0 ? 3000 : 800);
        wait(400);
    }
    log("灯台: 合図を送った");
}
TEXT
    iconv -f UTF-8 -t EUC-JP >"$tree/日誌/Log.java" <<'TEXT'
/**
 * 灯台の日誌に一行を書き足す。
 */
class Log {
    void add(String line) {
        if (line.isEmpty()) return;
        lines.add("灯台 " + line); // 日付は後で付ける
    }
}
TEXT
    iconv -f UTF-8 -t UTF-16 "$top/scripts/samples-source.txt" >"$tree/日誌/日記.txt"
}

# ini_value TEXT: TEXT for an ini file, every character escaped.
ini_value() {
    printf '"'
    printf '%s' "$1" | iconv -f UTF-8 -t UTF-16BE | od -An -v -tx1 | tr -d ' \n' \
        | sed 's/..../\\x&/g'
    printf '"'
}
