#include "settings/format/CardFormatter.h"

#include "settings/format/BackgroundJob.h"
#include "settings/format/CardFormatActivity.h"
#include "settings/format/CardFormatBackends.h"
#include "settings/format/FormatCommandRunner.h"

namespace {

FormatResult unchanged(const FormatPlan& plan, FormatResult::Outcome outcome, const QString& detail)
{
    FormatResult result;
    result.outcome = outcome;
    result.detail = detail;
    result.mounted = true; // as it was: nothing was unmounted
    result.mountPoint = plan.mountPoint;
    return result;
}

// The card is looked at again just before it is formatted: between the
// question and the answer it may have been taken out, or another card put in
// at the same folder.
FormatResult lookAgainAndFormat(
    const FormatPlan& plan, const CardFormatSystem& system, FormatCommandRunner& runner)
{
    if (plan.allowed()) {
        const FormatPlan now = CardFormatInspector(system, runner).inspect(plan.cardRoot);
        if (!now.allowed() || now.deviceName != plan.deviceName || now.mountPoint != plan.mountPoint
            || now.fileSystem != plan.fileSystem || now.label != plan.label
            || now.serial != plan.serial)
            return unchanged(plan, FormatResult::Outcome::Failed,
                QStringLiteral("the card changed since it was checked; nothing was changed")
                    + (now.allowed() ? QString() : QStringLiteral(" (") + now.reason + u')'));
    }
    return runFormat(plan, runner, system.procRoot);
}

// A format the viewer's quit has overtaken never starts; one that has started
// is counted until it has mounted the card again.
FormatResult checkedFormat(const FormatPlan& plan, const CardFormatSystem& system,
    FormatCommandRunner& runner, CardFormatActivity& activity)
{
    if (!activity.begin())
        return unchanged(plan, FormatResult::Outcome::NotStarted,
            QStringLiteral("the viewer is quitting; nothing was changed"));
    const FormatResult result = lookAgainAndFormat(plan, system, runner);
    activity.end(!result.mounted);
    return result;
}

} // namespace

CardFormatter::CardFormatter()
    : CardFormatter(CardFormatSystem::live(), std::make_shared<ProcessFormatCommandRunner>())
{
}

CardFormatter::CardFormatter(CardFormatSystem system, std::shared_ptr<FormatCommandRunner> runner,
    CardFormatActivity& activity)
    : m_system(std::make_shared<const CardFormatSystem>(std::move(system)))
    , m_runner(std::move(runner))
    , m_activity(&activity)
{
}

FormatPlan CardFormatter::inspectNow(const QString& cardRoot) const
{
    return CardFormatInspector(*m_system, *m_runner).inspect(cardRoot);
}

FormatResult CardFormatter::formatNow(const FormatPlan& plan) const
{
    return checkedFormat(plan, *m_system, *m_runner, *m_activity);
}

void CardFormatter::inspect(
    const QString& cardRoot, QObject* context, std::function<void(const FormatPlan&)> done)
{
    // The worker keeps its own references: the formatter may go first.
    auto system = m_system;
    auto runner = m_runner;
    runInBackground<FormatPlan>(
        context,
        [system, runner, cardRoot] {
            return CardFormatInspector(*system, *runner).inspect(cardRoot);
        },
        std::move(done));
}

void CardFormatter::format(
    const FormatPlan& plan, QObject* context, std::function<void(const FormatResult&)> done)
{
    auto system = m_system;
    auto runner = m_runner;
    CardFormatActivity* activity = m_activity; // process-wide, outlives the worker
    runInBackground<FormatResult>(
        context,
        [system, runner, activity, plan] {
            return checkedFormat(plan, *system, *runner, *activity);
        },
        std::move(done));
}
