#pragma once

#include "engine/SearchCondition.h"
#include "mainwindow/FormState.h"

#include <QObject>

class AppSettings;
class SearchForm;

QT_BEGIN_NAMESPACE
class QComboBox;
class QCompleter;
QT_END_NAMESPACE

/// The keywords and masks that the form has seen, the completer over them, and
/// the three matching toggles: between the form and AppSettings.
class KeywordControl : public QObject {
    Q_OBJECT

public:
    /// form is not owned and must outlive this object.
    KeywordControl(SearchForm *form, QObject *parent);

    /// Replaces the completer of combo, which takes the new one.
    static void setCompleter(QComboBox *combo, QCompleter *completer);

    void fillAll();
    /// Another program has changed the keyword history; what is typed stays.
    void reload();
    /// For a search that starts with condition, and with the switches of form.
    void remember(const SearchCondition &condition, const FormState &form);
    /// For a search that has ended.
    void rememberMask(const QString &mask);
    /// A past keyword comes back with the switches it was searched with.
    void choosePast(const QString &keyword);
    void flip(bool AppSettings::*toggle);

private:
    void fillKeywords1();

    SearchForm *const m_form;
};
