//! 検索語に一致した行を数える。
use std::collections::HashMap;
use std::io::{self, BufRead};

/* A block comment:
   fn no() { return "x" } don't */
#[derive(Debug, Clone)]
pub struct Hit<'a> {
    path: &'a str,
    line: usize,
}

const LIMIT: u32 = 1_000;

impl<'a> Hit<'a> {
    pub fn count(&self, word: char) -> Option<u64> {
        let mut total = 0u64;
        if word == 'x' || word == '\n' {
            return None; // it's too common
        }
        loop {
            match total {
                0 => total += 0xFF,
                _ => break,
            }
        }
        println!("{} 件 // {}", total, self.path);
        Some(total)
    }
}

async fn run() -> io::Result<()> {
    unsafe { panic!("終わり") }
}
