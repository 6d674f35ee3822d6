#include "format/CardFormatter.h"

#include "format/BackgroundJob.h"
#include "format/CardFormatBackends.h"
#include "format/FormatCommandRunner.h"

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
    return runFormat(plan, *m_runner, m_system->procRoot);
}

void CardFormatter::inspect(
    const QString& cardRoot, QObject* context, std::function<void(const FormatPlan&)> done)
{
    // The worker keeps its own references: the formatter may go first.
    auto system = m_system;
    auto runner = m_runner;
    runInBackground<FormatPlan>(
        context,
        [system, runner, cardRoot] { return CardFormatInspector(*system, *runner).inspect(cardRoot); },
        std::move(done));
}

void CardFormatter::format(
    const FormatPlan& plan, QObject* context, std::function<void(const FormatResult&)> done)
{
    auto system = m_system;
    auto runner = m_runner;
    runInBackground<FormatResult>(
        context, [system, runner, plan] { return runFormat(plan, *runner, system->procRoot); },
        std::move(done));
}
