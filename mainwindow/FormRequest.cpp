#include "mainwindow/FormRequest.h"

#include "settings/SearchPaths.h"

namespace FormRequest {

Field missing(Mode mode, const FormState &form)
{
    if (mode == Mode::Search && form.keyword1.isEmpty())
        return Field::Keyword1;
    if (form.pathText.isEmpty())
        return Field::Paths;
    return form.mask.isEmpty() ? Field::Mask : Field::None;
}

QString refusal(Field missing)
{
    switch (missing) {
    case Field::Keyword1:
        return QStringLiteral("キーワード１を指定してください");
    case Field::Paths:
        return QStringLiteral("検索パスを指定してください");
    case Field::Mask:
        return QStringLiteral("マスクを指定してください");
    case Field::None:
        break;
    }
    return QString();
}

SearchCondition condition(Mode mode, const FormState &form)
{
    SearchCondition condition;
    condition.pathlist = SearchPaths::fromText(form.pathText);
    condition.mask = form.mask;
    condition.keyword1 = form.keyword1;
    condition.keyword2 = form.usesKeyword2() ? form.keyword2 : QString();
    condition.keyword3 = form.keyword3Group ? form.keyword3 : QString();
    condition.plusline = form.lineDistance;
    condition.flg = (form.ignoreCase ? SearchCondition::IgnoreCaseFlag : 0)
        + (form.word ? SearchCondition::WordFlag : 0)
        + (form.regexp ? SearchCondition::RegExpFlag : 0);
    condition.fnameflg = form.emptyFiles;
    condition.subdir = form.subdir;
    condition.linecount = mode == Mode::LineCount;
    return condition;
}

} // namespace FormRequest
