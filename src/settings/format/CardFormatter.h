#pragma once

#include "settings/format/CardFormatActivity.h"
#include "settings/format/CardFormatInspector.h"
#include "settings/format/CardFormatPlan.h"

#include <functional>
#include <memory>

class FormatCommandRunner;
class QObject;

// The card format as the dialogs drive it: both steps answer later, on the
// thread of `context` (never inside the call), and not at all once `context`
// is gone. Tests put a scripted engine in its place.
class CardFormatEngine {
public:
    virtual ~CardFormatEngine() = default;

    // Decides whether the folder may be formatted and how.
    virtual void inspect(
        const QString& cardRoot, QObject* context, std::function<void(const FormatPlan&)> done)
        = 0;

    // Formats as the plan says (the real engine checks the card once more
    // first and fails, changing nothing, when it is no longer the same; and
    // once the viewer has begun to quit it starts nothing at all).
    virtual void format(
        const FormatPlan& plan, QObject* context, std::function<void(const FormatResult&)> done)
        = 0;
};

// The real engine: the inspection and the format run on worker threads of the
// lowest priority; the user-interface thread never waits for a child process.
class CardFormatter final : public CardFormatEngine {
public:
    CardFormatter(); // the running system, real child processes
    // `activity` learns of every format that begins and ends (the viewer's
    // quit waits for them); it must outlive every format started here.
    CardFormatter(CardFormatSystem system, std::shared_ptr<FormatCommandRunner> runner,
        CardFormatActivity& activity = CardFormatActivity::shared());

    void inspect(const QString& cardRoot, QObject* context,
        std::function<void(const FormatPlan&)> done) override;
    void format(const FormatPlan& plan, QObject* context,
        std::function<void(const FormatResult&)> done) override;

    // The same steps, waited for on the calling thread (the command line).
    FormatPlan inspectNow(const QString& cardRoot) const;
    FormatResult formatNow(const FormatPlan& plan) const;

private:
    std::shared_ptr<const CardFormatSystem> m_system;
    std::shared_ptr<FormatCommandRunner> m_runner;
    CardFormatActivity* m_activity;
};
