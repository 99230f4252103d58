#pragma once

#include <QString>
#include <QStringList>

/// What a text view needs of the window it stands in. The window implements
/// it, so that the views know nothing of the window.
class GrepEditorHost {
public:
    virtual ~GrepEditorHost();

    /// A word that was picked in a view, for the form's first or second keyword.
    virtual void setKeyword1(const QString &word) = 0;
    virtual void setKeyword2(const QString &word) = 0;

    /// Called after a keyword was set.
    virtual void refreshForm() = 0;

    /// The folders of the current search.
    virtual QStringList searchPaths() const = 0;
};
