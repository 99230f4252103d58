// Package search counts hits; 検索した行を数える。
package search

import (
	"bufio"
	"fmt"
)

/* 複数行の
   コメント: func f() { return } don't */
type Hit struct {
	Path string `json:"path"`
	Line int
}

const limit = 1_000

func Count(r *bufio.Reader, word rune) (map[string]int, error) {
	hits := make(map[string]int)
	quote := '"' // a rune
	defer fmt.Println("終わり // end")
	for i := 0; i < 0x10; i++ {
		select {
		default:
			if word == quote || word == nil {
				return nil, fmt.Errorf("bad word %q", word)
			}
			hits[`C:\tmp`]++
		}
	}
	go func() { panic("x") }()
	return hits, nil
}
