/* ログの行を数える。
 * A comment with an apostrophe: don't count empty lines. */
#include <stdio.h>
#include <string.h>

#define MAX_LINE 4096u

static size_t count_lines(FILE *in, const char *word)
{
    char line[MAX_LINE];
    size_t hits = 0;
    while (fgets(line, sizeof line, in) != NULL) {
        if (line[0] == '#' || line[0] == '"')
            continue; // a remark, "quoted" or not
        if (strstr(line, word))
            ++hits;
    }
    return hits;
}

int main(int argc, char *argv[])
{
    int class = argc > 1 ? 0x1F : 0; /* no word of C++ here: class, new, this */
    bool delete = true;
    printf("%zu 件 // %s\n", count_lines(stdin, argv[class & 1]), "end");
    return delete ? 0 : 1;
}
