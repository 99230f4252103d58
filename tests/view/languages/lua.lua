#!/usr/bin/env lua
-- 検索した行を数える。don't run it twice
--[[ A comment over
  lines: local function no() return "x" end ]]
--[==[ level two: it's ]==] local limit <const> = 1000

local Counter = {}
Counter.__index = Counter

function Counter.new(path, word)
  local self = setmetatable({}, Counter)
  self.path, self.word = path, word or 'x -- y'
  return self
end

function Counter:count()
  local total = 0
  for line in io.lines(self.path) do
    if line:find(self.word, 1, true) then
      total = total + 1
    elseif line == nil then goto done end
  end
  ::done::
  print(string.format("%d 件 -- 数", total)) -- "quoted" end
  local text = [[
    long text, not code: return nil
  ]]
  return total ~= 0 and total < 0xFF, 0x1p4, text
end

return Counter
