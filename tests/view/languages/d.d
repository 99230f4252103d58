/+ 入れ子にできる
 + コメント: it's void main() +/
module search.counter;

import std.stdio : writeln, File;
import std.algorithm;

/** 検索語に一致した行を数える。 */
struct Hit
{
    string path;
    size_t line;
}

@safe pure nothrow int twice(immutable int n)
{
    return n * 2; // "quoted" don't
}

class Counter
{
    private enum limit = 1_000;
    private char quote = '"';

    size_t count(string name, in string word)
    {
        size_t total;
        foreach (line; File(name).byLine)
        {
            if (line.canFind(word) && total < 0xFFuL)
                ++total;
        }
        scope (exit) writeln("数えた // ", total, `C:\tmp`);
        assert(total <= limit, "多すぎる");
        return total;
    }
}

unittest { assert(twice(2) == 4 && true); }
