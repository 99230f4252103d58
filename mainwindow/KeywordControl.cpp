#include "mainwindow/KeywordControl.h"

#include "mainwindow/PastedLine.h"
#include "mainwindow/SearchForm.h"
#include "settings/AppSettings.h"
#include "settings/HistoryList.h"
#include "settings/KeywordHistory.h"
#include "settings/dialogs/ClickThrough.h"
#include "settings/dialogs/LongEntries.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>

KeywordControl::KeywordControl(SearchForm *form, QObject *parent) : QObject(parent), m_form(form)
{
    connect(form, &SearchForm::pastKeywordChosen, this, &KeywordControl::choosePast);
}

void KeywordControl::setCompleter(QComboBox *combo, QCompleter *completer)
{
    QCompleter *former = combo->completer();
    completer->setParent(combo);
    completer->setCompletionMode(QCompleter::PopupCompletion);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    combo->setCompleter(completer);
    new ClickThrough(completer);
    LongEntries::shortenIn(completer);
    // What is typed in full needs no list that offers it alone. Later: the list opens
    // behind the signal.
    connect(
        combo->lineEdit(), &QLineEdit::textEdited, completer,
        [completer](const QString &typed) {
            if (completer->completionCount() == 1 && completer->currentCompletion() == typed)
                completer->popup()->hide();
        },
        Qt::QueuedConnection);
    // Later: it may be the one that is bringing the key that led here.
    if (former) {
        former->popup()->hide();
        former->deleteLater();
    }
}

void KeywordControl::fillKeywords1()
{
    m_form->fillKeywords1();
    const QStringList keywords = AppSettings::instance().keywordHistory->keywords();
    setCompleter(m_form->keyword1Combo(), new QCompleter(PastedLine::singleLines(keywords)));
}

void KeywordControl::fillAll()
{
    m_form->fillMasks();
    m_form->fillKeywords2();
    fillKeywords1();
}

void KeywordControl::reload()
{
    const QString typed = m_form->state().keyword1;
    AppSettings::instance().keywordHistory->reload();
    fillKeywords1();
    if (m_form->state().keyword1 != typed)
        m_form->setKeyword1(typed);
}

void KeywordControl::remember(const SearchCondition &condition, const FormState &form)
{
    AppSettings &settings = AppSettings::instance();
    if (!condition.keyword1.isEmpty()) {
        settings.keywordHistory->add(condition.keyword1, form.ignoreCase, form.word, form.regexp);
        fillKeywords1();
    }
    if (!condition.keyword2.isEmpty()) {
        HistoryList::insert(settings.history2, condition.keyword2);
        m_form->fillKeywords2();
    }
}

void KeywordControl::rememberMask(const QString &mask)
{
    HistoryList::insert(AppSettings::instance().maskhistory, mask);
    m_form->fillMasks();
}

void KeywordControl::choosePast(const QString &keyword)
{
    AppSettings &settings = AppSettings::instance();
    const int index = settings.keywordHistory->find(keyword);
    if (index < 0)
        return;
    const auto &entry = settings.keywordHistory->entries()[static_cast<size_t>(index)];
    settings.caseinsensitive = entry.flagA;
    settings.word = entry.flagB;
    settings.regexp = entry.flagC;
    m_form->showToggles();
}

void KeywordControl::flip(bool AppSettings::*toggle)
{
    AppSettings &settings = AppSettings::instance();
    settings.*toggle = !(settings.*toggle);
    m_form->showToggles();
}
