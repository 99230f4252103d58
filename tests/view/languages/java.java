package jp.example.search;

import java.util.List;
import java.util.Map;

/**
 * 検索結果を数えるクラス。
 * Don't share it: "not" safe for threads.
 */
public final class HitCounter implements Comparable<HitCounter> {
    private static final long LIMIT = 1_000L;
    private final Map<String, Integer> hits;
    private char quote = '"'; // ends here

    public HitCounter(Map<String, Integer> hits) {
        this.hits = hits;
    }

    @Override
    public int compareTo(HitCounter other) {
        var requests = "http://example.jp/検索";
        record Pair(String key, int count) { }
        /* if */ if (other == null) throw new IllegalArgumentException("値がない");
        return switch (hits.size()) {
            case 0 -> -1;
            default -> 0x7F;
        };
    }
}
