#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace tarnwick::launchctl {

/// The command that registers login agents. Any thread may use it, one at a time; it may take as long
/// as another program takes, so keep it off the main thread.
class Launchctl {
public:
    Launchctl() = default;
    Launchctl(const Launchctl&) = delete;
    Launchctl& operator=(const Launchctl&) = delete;
    virtual ~Launchctl() = default;

    /// Runs the command to its end: `bootstrap gui/UID FILE` registers the agent of the property list
    /// FILE, `unload FILE` ends it for now; while FILE stays, the next login starts it again. Returns why
    /// the command could not be run; empty when it was, whatever came of it.
    virtual QString run(const QStringList& arguments) = 0;

    /// Whether the agent of the property list `file`, as it is now, is one that the next login starts.
    /// Somebody may have switched it off by the desktop's own means, which is respected.
    virtual bool isRegistered(const QString& file) const = 0;

    /// Tells that the property list `file` is gone for good.
    virtual void forget(const QString& file) = 0;
};

/// The machine's own, else an `AutostartLaunchctl` for the user's autostart folder.
std::unique_ptr<Launchctl> makeLaunchctl();

/// Stands in for the command where there is none: agents start from autostart entries.
class AutostartLaunchctl : public Launchctl {
public:
    /// `folder` is where the desktop looks for autostart entries.
    explicit AutostartLaunchctl(QString folder);

    QString run(const QStringList& arguments) override;
    bool isRegistered(const QString& file) const override;
    void forget(const QString& file) override;

private:
    QString bootstrap(const QString& file) const;
    QString entryPath(const QString& label) const;

    const QString m_folder;
};

} // namespace tarnwick::launchctl
