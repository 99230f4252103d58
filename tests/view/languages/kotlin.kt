@file:JvmName("Search")
package jp.example.search

import java.io.File

/* 一致した行を
 * 数える。It's a comment: val x = 1 */
sealed interface Hit {
    data class Line(val path: String, val number: Int) : Hit
    object None : Hit
}

class Counter(private val word: String) {
    var total: Long = 0L
        private set

    companion object {
        const val QUOTE = '"' // one character
    }

    suspend fun count(files: List<File>): Map<String, Int> {
        val found = mutableMapOf<String, Int>()
        files@ for (file in files) {
            if (!file.exists()) continue@files
            when (val n = file.readLines().count { it.contains(word) }) {
                0 -> println("見つからない // ${file.name}")
                in 1..0xFF -> found[file.path] = n
                else -> throw IllegalStateException("多すぎる")
            }
        }
        return found ?: error("null")
    }
}
