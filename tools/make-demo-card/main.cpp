// make-demo-card: writes a dash-camera memory card full of realistic
// recordings (front and rear video with G-sensor and GPS telemetry in every
// format the cameras use), plus its settings, for the demo and the tests.

#include "DemoCard.h"
#include "DemoOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRegularExpression>
#include <QTextStream>

#include <optional>

namespace {

std::optional<QSize> parseSize(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{2,4})x(\\d{2,4})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    // The encoders want even sizes.
    if (size.width() % 2 || size.height() % 2)
        return std::nullopt;
    return size;
}

bool readInt(const QCommandLineParser& parser, const QString& name, int low, int high, int& value,
    QTextStream& err)
{
    if (!parser.isSet(name))
        return true;
    bool ok = false;
    const int parsed = parser.value(name).toInt(&ok);
    if (!ok || parsed < low || parsed > high) {
        err << "make-demo-card: --" << name << " must be a number from " << low << " to " << high
            << '\n';
        return false;
    }
    value = parsed;
    return true;
}

bool readSizes(const QCommandLineParser& parser, DemoOptions& options, QTextStream& err)
{
    const QString resolution = parser.value(QStringLiteral("resolution"));
    if (resolution == QLatin1String("1080p")) {
        options.frontSize = QSize(1920, 1080);
        options.rearSize = QSize(1280, 720);
    } else if (resolution != QLatin1String("720p")) {
        err << "make-demo-card: --resolution must be 720p or 1080p\n";
        return false;
    }
    for (const QString& name : { QStringLiteral("front-size"), QStringLiteral("rear-size") }) {
        if (!parser.isSet(name))
            continue;
        const std::optional<QSize> size = parseSize(parser.value(name));
        if (!size) {
            err << "make-demo-card: --" << name << " must be WIDTHxHEIGHT with even numbers\n";
            return false;
        }
        (name == QLatin1String("front-size") ? options.frontSize : options.rearSize) = *size;
    }
    return true;
}

std::optional<DemoOptions> parseOptions(const QCoreApplication& app, QTextStream& err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Writes a demo dash-camera memory card: clips of every recording kind and file format with "
        "G-sensor and GPS telemetry, and the camera's SETTING folder. Beside it, OUT-kel and "
        "OUT-web "
        "hold the cards of a Kel-family camera and of a camera with its own settings page."));
    parser.addHelpOption();
    parser.addOptions({
        { { QStringLiteral("o"), QStringLiteral("out") },
            QStringLiteral("The card folder to write."), QStringLiteral("OUT") },
        { QStringLiteral("length"), QStringLiteral("Seconds per clip, 2 to 60 (default 20)."),
            QStringLiteral("SECONDS") },
        { QStringLiteral("clips"),
            QStringLiteral(
                "Consecutive front/rear pairs of the drive in cont_rec, 1 to 20 (default 4)."),
            QStringLiteral("N") },
        { QStringLiteral("resolution"),
            QStringLiteral("720p (front 1280x720, rear 640x360; default) or 1080p (front "
                           "1920x1080, rear 1280x720)."),
            QStringLiteral("RES"), QStringLiteral("720p") },
        { QStringLiteral("front-size"),
            QStringLiteral("Front picture size, e.g. 320x180 (overrides --resolution)."),
            QStringLiteral("WxH") },
        { QStringLiteral("rear-size"), QStringLiteral("Rear picture size."),
            QStringLiteral("WxH") },
        { QStringLiteral("fps"), QStringLiteral("Frames a second, 5 to 30 (default 15)."),
            QStringLiteral("N") },
        { QStringLiteral("seed"),
            QStringLiteral("Seed of the drive: lights, waits, road noise (default 1)."),
            QStringLiteral("N") },
        { QStringLiteral("jobs"), QStringLiteral("ffmpeg runs at a time (default 2)."),
            QStringLiteral("N") },
        { QStringLiteral("no-extra-cards"), QStringLiteral("Write only the main card.") },
        { QStringLiteral("force"),
            QStringLiteral("Write the card again even when it is up to date.") },
        { { QStringLiteral("v"), QStringLiteral("verbose") },
            QStringLiteral("List the files as they are encoded.") },
    });
    parser.process(app);
    DemoOptions options;
    options.outDir = parser.value(QStringLiteral("out"));
    if (options.outDir.isEmpty() || !parser.positionalArguments().isEmpty()) {
        err << "usage: make-demo-card --out OUT [--length SECONDS] [--clips N] [--resolution "
               "720p|1080p] "
               "[--seed N] [--force]\n";
        return std::nullopt;
    }
    int seed = 1;
    if (!readInt(parser, QStringLiteral("length"), 2, 60, options.clipSeconds, err)
        || !readInt(parser, QStringLiteral("clips"), 1, 20, options.continuousClips, err)
        || !readInt(parser, QStringLiteral("fps"), 5, 30, options.fps, err)
        || !readInt(parser, QStringLiteral("seed"), 0, 1 << 30, seed, err)
        || !readInt(parser, QStringLiteral("jobs"), 1, 16, options.jobs, err)
        || !readSizes(parser, options, err))
        return std::nullopt;
    options.seed = std::uint64_t(seed);
    options.extraCards = !parser.isSet(QStringLiteral("no-extra-cards"));
    options.force = parser.isSet(QStringLiteral("force"));
    options.verbose = parser.isSet(QStringLiteral("verbose"));
    return options;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("make-demo-card"));
    QTextStream err(stderr);
    const std::optional<DemoOptions> options = parseOptions(app, err);
    if (!options)
        return 2;
    DemoCard card(*options);
    if (!card.generate(err)) {
        err << "make-demo-card: " << card.errorString() << '\n';
        return 1;
    }
    return 0;
}
