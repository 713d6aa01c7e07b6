#pragma once

#include <QObject>

namespace wendlore {

/// Tells, on the main thread, that the system asks the program to end (SIGTERM, SIGHUP) or that somebody
/// pressed Ctrl+C where it was started. One at a time.
class QuitSignals final : public QObject
{
    Q_OBJECT

public:
    explicit QuitSignals(QObject* parent = nullptr);
    ~QuitSignals() override;

Q_SIGNALS:
    void quitRequested();

private:
    int m_pipe[2] = {-1, -1};
};

} // namespace wendlore
