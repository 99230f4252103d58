#include "mainwindow/FormRequest.h"

#include "settings/SearchPaths.h"

namespace FormRequest {

QString refusal(Mode mode, const FormState &form)
{
    if (mode == Mode::Search && form.keyword1.isEmpty())
        return QStringLiteral("キーワード１を指定してください");
    if (form.pathText.isEmpty())
        return QStringLiteral("検索パスを指定してください");
    if (form.mask.isEmpty())
        return QStringLiteral("マスクを指定してください");
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
