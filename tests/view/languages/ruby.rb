#!/usr/bin/env ruby
# 検索した行を数える。don't load it twice
require 'set'

=begin
A comment over lines: def no; return "x"; end
=end

module Search
  LIMIT = 1_000

  class Counter < Struct
    attr_reader :total, :words

    def initialize(path, word: 'x # y')
      @path = path
      @total = 0
      @classes = Set.new
    end

    def empty?
      @total.zero? && !@path.nil? # "quoted" end
    end

    def count
      File.foreach(@path) do |line|
        next unless line.include?("検索")
        @total += 1 if $DEBUG || line =~ /end/
      end
      puts "#{@total} 件 # 数"
      @total > 0xFF ? nil : true
    end
  end
end
