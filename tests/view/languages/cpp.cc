// 検索語を大文字と小文字を区別せずに探す。
#pragma once
#include <algorithm>
#include <string_view>

namespace text {

/* A block comment over
   two lines: it's "open" here; int two = 2; */
template <typename T>
concept Searchable = requires(T t) { t.size(); };

class Finder final : public Base {
public:
    explicit Finder(std::string_view word) noexcept : m_word(word) { }

    [[nodiscard]] virtual bool matches(const std::string &line) const override
    {
        constexpr char quote = '"'; // not a string's start
        if (line.empty() || line.front() == quote)
            return false;
        auto found = line.find("/* 見出し */");
        return found != npos && found < 10u;
    }

private:
    std::string_view m_word = nullptr;
    static constexpr long kMost = 0xFFUL;
    int class_count = MAX_WORD_COUNT;
};

} // namespace text
