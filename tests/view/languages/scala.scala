package jp.example.search

import scala.io.Source
import scala.util.{Try, Success as Ok}

/** 検索した行を数える。
  * Don't block: val x = "open" */
final case class Hit(path: String, line: Int)

enum Mode:
  case Text, Pattern

trait Counter[-A]:
  def count(of: A): Option[Long]

object Counter:
  private lazy val limit = 1_000L
  given Ordering[Hit] = Ordering.by(_.line)

  extension (text: String)
    inline def lineCount: Int = text.split('\n').length

  @main def run(files: String*): Unit =
    val quote = '"' // a character
    for file <- files if !file.isEmpty do
      Try(Source.fromFile(file).getLines.size) match
        case Ok(n) if n > 0xFF => println(s"多い // $n")
        case Ok(n)             => println(s"$file: $n 件")
        case _                 => throw new Exception("読めない")
  end run
  val `the word` = null; val extended = true
