#pragma once

#include "view/GrepEditorHost.h"

/// Stands in for the main window and keeps what a view gives it.
class RecordingHost : public GrepEditorHost {
public:
    void setKeyword1(const QString &word) override { calls << QStringLiteral("1:") + word; }
    void setKeyword2(const QString &word) override { calls << QStringLiteral("2:") + word; }
    void refreshForm() override { calls << QStringLiteral("refresh"); }
    QStringList searchPaths() const override { return paths; }

    QStringList calls;
    QStringList paths;
};
