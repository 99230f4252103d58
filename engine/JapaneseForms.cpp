#include "engine/JapaneseForms.h"

#include "engine/CodeSet.h"
#include "engine/JapaneseFormCollector.h"

#include <algorithm>

const JapaneseForms &JapaneseForms::of(int codeSet)
{
    static const JapaneseForms none;
    switch (codeSet) {
    case CodeSet::ShiftJis: {
        static const JapaneseForms forms = JapaneseFormCollector(codeSet).collect();
        return forms;
    }
    case CodeSet::EucJp: {
        static const JapaneseForms forms = JapaneseFormCollector(codeSet).collect();
        return forms;
    }
    case CodeSet::Iso2022Jp: {
        static const JapaneseForms forms = JapaneseFormCollector(codeSet).collect();
        return forms;
    }
    default:
        return none;
    }
}

QVector<QByteArray> JapaneseForms::forms(char16_t character) const
{
    QVector<QByteArray> result;
    const auto range = std::equal_range(m_forms.cbegin(), m_forms.cend(), Form{character, 0, {}});
    for (auto form = range.first; form != range.second; ++form) {
        const QByteArray bytes(form->bytes, form->length);
        if (!result.contains(bytes))
            result.append(bytes);
    }
    return result;
}
