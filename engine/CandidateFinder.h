#pragma once

#include "engine/ByteSearch.h"
#include "engine/RequiredLiteral.h"
#include "engine/SearchKernels.h"

#include <QStringView>
#include <QVector>

#include <optional>

/// Finds in decoded text where the next line that can match keyword1 is.
///
/// Immutable; any number of threads may use one object.
class CandidateFinder {
public:
    /// keyword1 as it is matched, see RequiredLiteral.
    CandidateFinder(const QString &keyword1, bool regExp, Qt::CaseSensitivity sensitivity,
                    const SearchKernels::Table &kernels = SearchKernels::best());
    explicit CandidateFinder(const RequiredLiteral &required,
                             const SearchKernels::Table &kernels = SearchKernels::best());

    /// False: nothing is known of what a match needs, every line may match.
    bool usable() const { return m_usable; }

    /// The first position at or after from, in UTF-16 code units, where one of
    /// the texts that a match needs begins; -1 if there is none, so that no line
    /// that begins at or after from can match. from is 0 or more, and not inside
    /// a line that is still of interest. For a keyword that is no pattern this is
    /// what QString::indexOf() says; of a list of many texts (isList()) it may be where
    /// less than one of them stands. Only if usable().
    qint64 next(QStringView text, qint64 from) const;

    /// Many texts are looked for together. Only then the next two are of use.
    bool isList() const { return m_list.has_value(); }

    /// The first position in a line, in UTF-16 code units and at or behind from, where a
    /// match may begin, unless mayMatchAnywhere(); -1 if there is none.
    qint64 nextStart(QStringView line, qint64 from) const;

    /// The line has a character that is taken for another one without its case.
    bool mayMatchAnywhere(QStringView line) const;

private:
    struct Literal {
        QString text;
        QVector<uint> folded; // one for each unit of text, empty when case counts
        SearchKernels::UnitPair pair;
    };

    /// The texts' beginnings as the bytes of UTF-16; the strays are whatever in a text
    /// shows that it may match without the needles.
    struct List {
        ByteSearch needles;
        ByteSearch strays;
        ByteSearch all;
    };

    static std::optional<List> listOf(const RequiredLiteral &required);
    void add(const QString &text, Qt::CaseSensitivity sensitivity);
    qint64 find(const Literal &literal, const char16_t *text, qint64 from, qint64 end) const;

    QVector<Literal> m_literals;
    std::optional<List> m_list; // in the place of literals
    const SearchKernels::Table *m_kernels;
    bool m_usable = false;
};
