#pragma once

#include "view/ProgramLauncher.h"

#include <QVector>

/// Starts nothing and keeps what it was to start, as a launcher of either
/// platform.
class RecordingLauncher : public ProgramLauncher {
public:
    explicit RecordingLauncher(PathStyle style = PathStyle::Unix) : m_style(style) { }

    PathStyle pathStyle() const override { return m_style; }
    bool startDetached(const LaunchCommand &command) override
    {
        started.append(command);
        return succeeds;
    }
    bool open(const LaunchCommand &command) override
    {
        opened.append(command);
        return succeeds;
    }

    bool succeeds = true;
    QVector<LaunchCommand> started;
    QVector<LaunchCommand> opened;

private:
    const PathStyle m_style;
};
