// tavro cut DIR --trip N --from SECONDS --to SECONDS --output FILE.mp4
//   [--camera front|rear] [--compose pip|side] [--overlay]
// One MP4 out of a stretch of a drive.
#include "cli/CardCliSupport.h"
#include "cli/CliCommands.h"

#include "cut/VideoCut.h"
#include "library/QtProcessRunner.h"
#include "trips/CardTrips.h"

#include <QDateTime>
#include <QFileInfo>

#include <cmath>
#include <csignal>
#include <optional>
#include <unistd.h>

namespace {

constexpr char kUsage[]
    = "usage: tavro cut DIR --trip N --from SECONDS --to SECONDS --output FILE.mp4 "
      "[--camera front|rear] [--compose pip|side] [--overlay]\n";

int usage(CliIo& io, const QString& why = {})
{
    if (!why.isEmpty())
        io.err << "tavro cut: " << why << '\n';
    io.err << kUsage;
    return CliExit::kUsage;
}

struct Arguments {
    QString folder;
    std::optional<int> trip;
    std::optional<double> from;
    std::optional<double> to;
    QString output;
    CutPlan::Request request;
};

std::optional<double> seconds(const QString& text)
{
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value) || value < 0 || value > 1e9)
        return std::nullopt;
    return value;
}

// The options taking a value; false when the value is no good.
bool takeValue(Arguments& parsed, const QString& name, const QString& value)
{
    if (name == QLatin1String("--trip")) {
        bool ok = false;
        const int index = value.toInt(&ok);
        parsed.trip = ok && index >= 0 ? std::optional(index) : std::nullopt;
        return parsed.trip.has_value();
    }
    if (name == QLatin1String("--from"))
        return (parsed.from = seconds(value)).has_value();
    if (name == QLatin1String("--to"))
        return (parsed.to = seconds(value)).has_value();
    if (name == QLatin1String("--output")) {
        parsed.output = value;
        return !value.isEmpty();
    }
    if (name == QLatin1String("--camera")) {
        parsed.request.camera
            = value == QLatin1String("rear") ? CutPlan::Camera::Rear : CutPlan::Camera::Front;
        return value == QLatin1String("front") || value == QLatin1String("rear");
    }
    if (name == QLatin1String("--compose")) {
        parsed.request.compose = value == QLatin1String("side")
            ? CutPlan::Compose::SideBySide
            : CutPlan::Compose::PictureInPicture;
        return value == QLatin1String("pip") || value == QLatin1String("side");
    }
    return false;
}

// Null when the words are no valid command line.
std::optional<Arguments> parse(const QStringList& args)
{
    static const QStringList valued { "--trip", "--from", "--to", "--output", "--camera",
        "--compose" };
    Arguments parsed;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (arg == QLatin1String("--overlay")) {
            parsed.request.overlay = true;
        } else if (valued.contains(arg)) {
            if (i + 1 >= args.size() || !takeValue(parsed, arg, args[++i]))
                return std::nullopt;
        } else if (arg.startsWith(u'-') || !parsed.folder.isEmpty()) {
            return std::nullopt;
        } else {
            parsed.folder = arg;
        }
    }
    if (parsed.folder.isEmpty() || !parsed.trip || !parsed.from || !parsed.to
        || parsed.output.isEmpty() || *parsed.to <= *parsed.from)
        return std::nullopt;
    parsed.request.from = *parsed.from;
    parsed.request.to = *parsed.to;
    return parsed;
}

// Ctrl+C and SIGTERM end ffmpeg through the runner; the cut then removes its
// partial file and the command ends by the same signal.
QtProcessRunner* g_runner = nullptr;
volatile std::sig_atomic_t g_signal = 0;

extern "C" void stopCut(int signal)
{
    g_signal = signal;
    if (g_runner)
        g_runner->cancel();
}

class SignalGuard {
public:
    explicit SignalGuard(QtProcessRunner& runner)
    {
        g_runner = &runner;
        struct sigaction action { };
        action.sa_handler = stopCut;
        sigemptyset(&action.sa_mask);
        sigaction(SIGINT, &action, &m_oldInt);
        sigaction(SIGTERM, &action, &m_oldTerm);
    }
    ~SignalGuard()
    {
        sigaction(SIGINT, &m_oldInt, nullptr);
        sigaction(SIGTERM, &m_oldTerm, nullptr);
        g_runner = nullptr;
    }
    SignalGuard(const SignalGuard&) = delete;
    SignalGuard& operator=(const SignalGuard&) = delete;

private:
    struct sigaction m_oldInt { };
    struct sigaction m_oldTerm { };
};

// On a terminal one line rewritten in place, else a line every tenth.
class ProgressPrinter {
public:
    explicit ProgressPrinter(QTextStream& err)
        : m_err(err)
        , m_terminal(::isatty(STDERR_FILENO) == 1)
    {
    }
    void operator()(double done, double total)
    {
        const int percent = total > 0 ? int(done * 100 / total) : 100;
        if (!m_terminal && percent / 10 == m_lastTenth)
            return;
        m_lastTenth = percent / 10;
        m_err << (m_terminal ? "\r" : "") << "tavro cut: " << QString::number(done, 'f', 1)
              << " of " << QString::number(total, 'f', 1) << " s (" << percent << "%)"
              << (m_terminal ? "" : "\n");
        m_err.flush();
        m_printed = true;
    }
    void finish()
    {
        if (m_terminal && m_printed)
            m_err << '\n';
    }

private:
    QTextStream& m_err;
    bool m_terminal;
    bool m_printed = false;
    int m_lastTenth = -1;
};

QString resultJson(const VideoCut::Result& result)
{
    const QString start = QDateTime::fromMSecsSinceEpoch(result.startUtc, Qt::UTC)
                              .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz'Z'"));
    return QStringLiteral("{\"output\":%1,\"start\":%2,\"duration\":%3,\"reencoded\":%4}")
        .arg(CardCli::jsonString(result.output), CardCli::jsonString(start),
            QString::number(result.duration, 'f', 3),
            result.reencoded ? QStringLiteral("true") : QStringLiteral("false"));
}

} // namespace

int runCutCommand(const QStringList& args, CliIo& io)
{
    const std::optional<Arguments> parsed = parse(args);
    if (!parsed)
        return usage(io);
    const QFileInfo info(parsed->folder);
    if (!info.isDir() || !info.isReadable() || !info.isExecutable()) {
        io.err << "tavro cut: cannot read folder " << parsed->folder << '\n';
        return CliExit::kFailure;
    }
    const QVector<Trip> trips = CardTrips::read(info.absoluteFilePath());
    if (*parsed->trip >= trips.size())
        return usage(
            io, QStringLiteral("there are %1 trips in %2").arg(trips.size()).arg(parsed->folder));
    const Trip& trip = trips[*parsed->trip];
    if (parsed->request.from >= trip.duration())
        return usage(io,
            QStringLiteral("trip %1 lasts %2 s")
                .arg(*parsed->trip)
                .arg(trip.duration(), 0, 'f', 3));

    QtProcessRunner runner;
    ProgressPrinter printer(io.err);
    VideoCut::Result result;
    {
        const SignalGuard guard(runner);
        result = VideoCut::cut(trip, parsed->request, parsed->output, runner,
            [&printer](double done, double total) { printer(done, total); });
    }
    printer.finish();
    if (g_signal != 0) {
        io.err << "tavro cut: stopped, nothing written\n";
        io.err.flush();
        const int signal = g_signal;
        std::signal(signal, SIG_DFL);
        std::raise(signal);
        return CliExit::kFailure;
    }
    if (!result.ok()) {
        io.err << "tavro cut: " << result.message << '\n';
        return CliExit::kFailure;
    }
    io.out << resultJson(result) << '\n';
    return CliExit::kOk;
}
