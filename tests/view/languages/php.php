<?php
declare(strict_types=1);

namespace Search;

/**
 * 検索した行を数える。Don't use it for binary files.
 */
#[Attribute]
final class Counter implements \Countable
{
    private const LIMIT = 1_000;
    private array $hits = [];

    public function __construct(private readonly string $word = 'x # y') {}

    public function count(): int
    {
        # an old remark: if (true) "x"
        foreach ($this->hits as $path => $lines) {
            if (!is_array($lines) || $path === "http://例.jp") {
                continue; // it's skipped
            }
            $total = ($total ?? 0) + count($lines);
        }
        /* return 1; */
        return match (true) {
            $total > 0xFF => self::LIMIT,
            default => $total ?? null,
        };
    }
}
?>
<p>Functions for the count</p>
