# 検索した行を数える。don't source it twice
library(stats)

limit <- 1000L
words <- c("検索", 'x # y', "if else")

#' Counts the lines of a file.
#' @param path if missing, nothing
count_lines <- function(path, word = words[1]) {
  if (!file.exists(path)) {
    stop("読めない: ", path)
  }
  lines <- readLines(path, encoding = "UTF-8")
  hits <- grepl(word, lines, fixed = TRUE) # "quoted" next
  total <- sum(hits)
  if (is.na(total) || total > limit) return(NULL)
  total
}

files <- list.files(".", pattern = "log$")
result <- data.frame(
  path = files,
  total = vapply(files, count_lines, numeric(1)),
  forms = NA_character_
)
result <- result[order(-result$total), ] |> head(0xFF)
for (i in seq_len(nrow(result))) {
  cat(sprintf("%s: %d\n", result$path[i], result$total[i]))
}
odd <- Filter(\(x) x %% 2 == 1, 1:10)
