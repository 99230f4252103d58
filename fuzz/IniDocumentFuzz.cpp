#include "engine/NativePath.h"
#include "fuzz/FuzzInput.h"
#include "settings/IniDocument.h"
#include "settings/IniText.h"

#include <QMap>
#include <QVariant>

namespace {

using Values = QMap<QString, QVariant>;

Values valuesOf(const IniDocument &document)
{
    Values values;
    for (const QString &key : document.allKeys()) {
        require(document.contains(key), "a key that is listed is there");
        values.insert(key, document.value(key));
        document.text(key);
        document.list(key);
    }
    return values;
}

/// What was read is left alone, and what is set is read.
void check(const QByteArray &bytes, IniDocument::Form form)
{
    const IniDocument document(bytes, form);
    const Values values = valuesOf(document);
    const QByteArray written = document.toBytes();
    const IniDocument again(written, form);
    require(valuesOf(again) == values, "a document that is written has the same values");
    require(again.toBytes() == written, "a document that is written twice stays the same");

    IniDocument changed(bytes, form);
    const QString key = QStringLiteral("section/新しい key");
    const QStringList list{QStringLiteral(" a, \"b\" "), QStringLiteral("検索\\"), QString()};
    changed.setValue(key, list);
    Values expected = values;
    expected.insert(key, list);
    const IniDocument read(changed.toBytes(), form);
    require(read.list(key) == list, "a value that is set is read");
    if (!values.contains(key))
        require(valuesOf(read) == expected, "every other value stays");
}

void checkText(const QString &text)
{
    const QByteArray value = IniText::escapedValue(text, IniText::Charset::Utf8);
    require(!value.contains('\n') && !value.contains('\r'), "a value is one line");
    require(IniText::unescapedText(value, IniText::Charset::Utf8) == text,
            "a text comes back from UTF-8");
    const QByteArray key = IniText::escapedKey(text);
    require(IniText::unescapedKey(key, IniText::Charset::Utf8).size() <= 6 * text.size() + 1,
            "a key is read");
    const QStringList list{text, QString(), text};
    const QVariant again = IniText::unescapedValue(
        IniText::escapedValue(list, IniText::Charset::Utf8), IniText::Charset::Utf8);
    require(again.toStringList() == list, "a list comes back from UTF-8");
}

} // namespace

/// Any bytes as an ini file, and any text as a value in one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const QByteArray bytes = input.rest();
    check(bytes, IniDocument::Form::Escaped);
    check(bytes, IniDocument::Form::Utf8);
    checkText(NativePath::fromNative(bytes));
    return 0;
}
