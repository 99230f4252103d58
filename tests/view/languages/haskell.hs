{-# LANGUAGE OverloadedStrings #-}
-- | 検索した行を数える。don't force it
module Search.Counter (Hit (..), countLines) where

import qualified Data.Map.Strict as Map
import Data.Char (toLower)

{- A block comment:
   let x = "open" in case y of it's -}
data Hit = Hit
  { hitPath :: FilePath
  , hitLine :: !Int
  } deriving (Eq, Show)

limit :: Int
limit = 0xFF

countLines :: String -> String -> Maybe Int
countLines word text
  | null word = Nothing
  | otherwise = Just (foldl' step 0 (lines text)) -- "quoted" where
  where
    step n line
      | word == line || head line == 'x' = n + 1
      | otherwise = n
    x' = limit --> 1_000

main :: IO ()
main = do
  text <- getContents
  case countLines "検索" text of
    Just n | n > 0 -> putStrLn ("件数 -- " ++ show n)
    _ -> pure ()
