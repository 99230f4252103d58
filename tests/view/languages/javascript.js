// 検索した行を数えて一覧にする。
import { readFile } from 'node:fs/promises';

/**
 * Counts the hits; don't call it twice.
 * @param {string} word if empty, return 0
 */
export async function count(word, files = []) {
  const totals = new Map();
  for (const file of files) {
    const text = await readFile(file, 'utf8');
    let hits = 0;
    for (const line of text.split('\n')) {
      if (line.includes(word)) hits += 1;
    }
    totals.set(file, hits ?? null);
  }
  console.log(`検索語: ${word}`);
  return totals; // the caller's
}

class Counter extends Array {
  #limit = 1_000n;
  static get size() { return 0xff; }
  trim(path) { return path.replace(/\/*$/, '/'); }
  from(list) { return typeof list === "undefined" ? NaN : this; }
}

const url = "http://example.jp/検索", forms = true;
