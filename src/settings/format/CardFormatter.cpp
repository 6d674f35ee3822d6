#include "format/CardFormatter.h"

#include "format/BackgroundJob.h"
#include "format/CardFormatBackends.h"
#include "format/FormatCommandRunner.h"

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
FormatResult checkedFormat(
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

} // namespace

CardFormatter::CardFormatter()
    : CardFormatter(CardFormatSystem::live(), std::make_shared<ProcessFormatCommandRunner>())
{
}

CardFormatter::CardFormatter(CardFormatSystem system, std::shared_ptr<FormatCommandRunner> runner)
    : m_system(std::make_shared<const CardFormatSystem>(std::move(system)))
    , m_runner(std::move(runner))
{
}

FormatPlan CardFormatter::inspectNow(const QString& cardRoot) const
{
    return CardFormatInspector(*m_system, *m_runner).inspect(cardRoot);
}

FormatResult CardFormatter::formatNow(const FormatPlan& plan) const
{
    return checkedFormat(plan, *m_system, *m_runner);
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
    runInBackground<FormatResult>(
        context, [system, runner, plan] { return checkedFormat(plan, *system, *runner); },
        std::move(done));
}
