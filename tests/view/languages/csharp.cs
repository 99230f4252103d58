#nullable enable
using System;
using System.Collections.Generic;

namespace Sarvik.Samples;

/// <summary>検索の結果。Don't keep it open.</summary>
[Serializable]
public sealed record SearchHit(string Path, int Line)
{
    private const string Pattern = @"C:\Temp\*.txt"; // a path, verbatim
    private readonly Dictionary<string, int> counts = new();

    public char Quote { get; init; } = '"';

    public async Task<int> CountAsync(string word)
    {
        /* 複数行の
           コメント: if (x) return "no"; */
        await Task.Delay(100);
        var limit = 1_000;
        foreach (var item in counts)
        {
            if (item.Key == word && item.Value < limit)
                return item.Value;
        }
        return Line > 0 ? 0xFF : -1;
    }
    #region Tail
    public override string ToString() => $"{Path}:{Line} 行目";
    #endregion
}
