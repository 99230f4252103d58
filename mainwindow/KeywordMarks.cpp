#include "mainwindow/KeywordMarks.h"

#include "mainwindow/FormState.h"
#include "view/GrepEditor.h"
#include "view/Highlighter.h"

void KeywordMarks::show(const GrepEditor &view, const FormState &form)
{
    const QRegExp pattern1 = view.findPattern(form.keyword1);
    if (form.usesKeyword2() && !form.keyword2.isEmpty())
        view.highlighter().setFind(pattern1, view.findPattern(form.keyword2));
    else
        view.highlighter().setFind(pattern1);
}
