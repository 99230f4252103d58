// 型のある検索の結果。
import type { Reader } from './reader';

/* A union: don't use
   interface any { never: string } */
export type Kind = 'file' | 'line';

export interface Hit<out T> {
  readonly path: string;
  line?: number;
  kind: Kind;
}

declare module "search" {
  const limit: bigint;
}

abstract class Counter<T extends Hit<unknown>> implements Iterable<T> {
  private hits: Array<T> = [];

  constructor(protected reader: Reader, public type = "通常 // 検索") {}

  @memoize
  isLine(hit: unknown): hit is T {
    return hit !== undefined && (hit as T).kind === 'line'; // it's a line
  }

  get count(): number {
    return this.hits.length satisfies number ? 0x10 : 1_000;
  }
}

enum Mode { Text, Pattern }
export const keys: keyof Hit<string> = `path`;
