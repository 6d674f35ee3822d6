#pragma once

#include <QObject>

class CardFormatActivity;

// Keeps the application from quitting in the middle of a card format, which
// would leave the card unmounted, or without a file system. Every quit goes
// through the application's Quit event: the window's Quit, a signal
// (SIGTERM on shutdown), the session ending. While a format runs the quit is
// held: the progress sheet stays up, no further format may begin, and once
// the card is mounted again the application quits. A format that left its
// card unmounted drops the held quit instead, so that its result sheet,
// which says so, stays on screen; the next quit goes through.
//
// A format that was asked for but has not begun when the quit goes through
// never starts. When the event loop ends without a Quit event, or the process
// exits from elsewhere, the guard still waits for a running format to finish
// before the application goes (aboutToQuit, and at exit for the process's own
// activity).
class FormatQuitGuard final : public QObject {
    Q_OBJECT

public:
    explicit FormatQuitGuard(QObject* parent = nullptr);
    // For tests: formats counted in an activity of their own.
    FormatQuitGuard(CardFormatActivity& activity, QObject* parent);
    ~FormatQuitGuard() override;

    bool isHoldingQuit() const { return m_holding; }

signals:
    // A quit was asked for while a format ran; it follows once the card is
    // mounted again.
    void quitHeld();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void formatsEnded();
    void lastChanceToFinish();

    CardFormatActivity& m_activity;
    bool m_holding = false;
};
