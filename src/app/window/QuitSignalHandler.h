#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGINT, SIGTERM and SIGHUP into an orderly quit of the application,
// so that the working folder is removed as on a normal quit. The signal
// handler only writes a byte to a pipe; the quit happens in the event loop.
class QuitSignalHandler : public QObject {
    Q_OBJECT
public:
    explicit QuitSignalHandler(QObject* parent = nullptr);
    ~QuitSignalHandler() override;

private:
    void onSignal();

    QSocketNotifier* m_notifier = nullptr;
};
