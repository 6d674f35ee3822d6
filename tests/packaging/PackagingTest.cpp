// The Debian package as a user gets it: CPack builds the .deb from this build,
// and the checks look at what dpkg sees (control fields, file list) and at the
// package unpacked into a temporary root (the programs run from there, the
// desktop entry, metainfo, man pages and bash completion as the desktop and
// the shell read them).
#include "CardBuilder.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QSize>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr int kCpackTimeoutMs = 300000;
constexpr int kToolTimeoutMs = 60000;
const QString kDesktopId = QStringLiteral("io.github.tavro.Viewer");

struct ToolRun {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

ToolRun run(const QString& program, const QStringList& args, const QStringList& extraEnv = {},
    int timeoutMs = kToolTimeoutMs)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const QString& entry : extraEnv)
        env.insert(entry.section(u'=', 0, 0), entry.section(u'=', 1));
    process.setProcessEnvironment(env);
    process.start(program, args);
    ToolRun result;
    if (!process.waitForStarted(kToolTimeoutMs)) {
        result.err = "cannot start " + program.toUtf8();
        return result;
    }
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        result.err = program.toUtf8() + " timed out";
        return result;
    }
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return result;
}

// Width and height from a PNG's IHDR chunk; (0, 0) when it is no PNG.
QSize pngSize(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray head = file.read(24);
    if (head.size() < 24 || !head.startsWith("\x89PNG\r\n\x1a\n") || head.mid(12, 4) != "IHDR")
        return {};
    auto be32 = [&head](int at) {
        return (quint8(head[at]) << 24) | (quint8(head[at + 1]) << 16) | (quint8(head[at + 2]) << 8)
            | quint8(head[at + 3]);
    };
    return QSize(int(be32(16)), int(be32(20)));
}

// "Key: value" control fields (continuation lines folded into the value).
QMap<QString, QString> controlFields(const QByteArray& text)
{
    QMap<QString, QString> fields;
    QString last;
    for (const QString& line : QString::fromUtf8(text).split(u'\n')) {
        if (line.startsWith(u' ') && !last.isEmpty()) {
            fields[last] += u'\n' + line.mid(1);
        } else if (const qsizetype colon = line.indexOf(u':'); colon > 0) {
            last = line.left(colon);
            fields[last] = line.mid(colon + 1).trimmed();
        }
    }
    return fields;
}

// The package names of a Depends/Recommends field, alternatives included,
// without versions.
QSet<QString> packageNames(const QString& field)
{
    QSet<QString> names;
    static const QRegularExpression separators(QStringLiteral("[,|]"));
    for (const QString& part : field.split(separators, Qt::SkipEmptyParts))
        names.insert(part.trimmed().section(u' ', 0, 0).section(u':', 0, 0));
    return names;
}

// The keys of a desktop entry's [Desktop Entry] group, as the desktop reads
// them (';' separates list items there; it starts no comment).
QMap<QString, QString> desktopEntry(const QString& path)
{
    QMap<QString, QString> keys;
    bool inGroup = false;
    for (const QString& line : QString::fromUtf8(TestFiles::read(path)).split(u'\n')) {
        if (line.startsWith(u'['))
            inGroup = line == QLatin1String("[Desktop Entry]");
        else if (const qsizetype equals = line.indexOf(u'='); inGroup && equals > 0)
            keys[line.left(equals).trimmed()] = line.mid(equals + 1).trimmed();
    }
    return keys;
}

// The library packages a program links directly (its NEEDED entries, resolved
// as the loader resolves them), each with the library it was found for.
QMap<QString, QString> linkedPackages(const QString& program)
{
    QMap<QString, QString> packages;
    const ToolRun dynamic = run(QStringLiteral("readelf"), { QStringLiteral("-d"), program });
    const ToolRun ldd = run(QStringLiteral("ldd"), { program });
    static const QRegularExpression needed(QStringLiteral("\\(NEEDED\\).*\\[(.+)\\]"));
    auto it = needed.globalMatch(QString::fromUtf8(dynamic.out));
    while (it.hasNext()) {
        const QString soname = it.next().captured(1);
        const QRegularExpression resolved(
            QStringLiteral("^\\s*%1 => (/\\S+)").arg(QRegularExpression::escape(soname)),
            QRegularExpression::MultilineOption);
        const QString path = resolved.match(QString::fromUtf8(ldd.out)).captured(1);
        // With merged /usr, dpkg knows a library under one of its two names.
        for (const QString& candidate :
            { path, QFileInfo(path).canonicalFilePath(), QStringLiteral("/usr") + path }) {
            const ToolRun owner = run(QStringLiteral("dpkg"), { QStringLiteral("-S"), candidate });
            if (!path.isEmpty() && owner.exitCode == 0) {
                packages.insert(
                    QString::fromUtf8(owner.out).section(u':', 0, 0).section(u',', 0, 0), soname);
                break;
            }
        }
    }
    return packages;
}

// The packages holding the QML modules a QML file imports ("import QtQuick" →
// the owner of …/qml/QtQuick/qmldir), each with the module's name; a module
// no package holds maps to an empty name.
QMap<QString, QString> qmlImportPackages(const QString& qmlFile)
{
    QMap<QString, QString> packages;
    static const QRegularExpression importLine(
        QStringLiteral("^import\\s+([A-Za-z][\\w.]*)"), QRegularExpression::MultilineOption);
    const QString qmlDir = QLibraryInfo::path(QLibraryInfo::QmlImportsPath);
    auto it = importLine.globalMatch(QString::fromUtf8(TestFiles::read(qmlFile)));
    while (it.hasNext()) {
        const QString module = it.next().captured(1);
        const QString qmldir = qmlDir + u'/' + QString(module).replace(u'.', u'/') + QStringLiteral("/qmldir");
        const ToolRun owner = run(QStringLiteral("dpkg"), { QStringLiteral("-S"), qmldir });
        packages.insert(owner.exitCode == 0
                ? QString::fromUtf8(owner.out).section(u':', 0, 0).section(u',', 0, 0)
                : QString(),
            module);
    }
    return packages;
}

// The commands `tavro --help` lists ("  tavro card identify DIR" → "card").
QStringList cliCommands(const QString& tavro)
{
    const ToolRun help = run(tavro, { QStringLiteral("--help") });
    QStringList commands;
    static const QRegularExpression usageLine(QStringLiteral("^\\s+tavro ([a-z-]+)"));
    for (const QString& line : QString::fromUtf8(help.out + help.err).split(u'\n')) {
        const QRegularExpressionMatch match = usageLine.match(line);
        if (match.hasMatch() && !commands.contains(match.captured(1)))
            commands.append(match.captured(1));
    }
    return commands;
}

class PackagingTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_work = std::make_unique<QTemporaryDir>();
        const QString work = s_work->path();
        // The package of this build, in a folder of its own so that a
        // `tools/dev.sh package` next to it is not disturbed.
        const ToolRun cpack = run(QStringLiteral(TAVRO_CPACK_COMMAND),
            { QStringLiteral("-G"), QStringLiteral("DEB"), QStringLiteral("--config"),
                QStringLiteral(TAVRO_BUILD_DIR "/CPackConfig.cmake"), QStringLiteral("-B"), work },
            {}, kCpackTimeoutMs);
        s_cpackLog = cpack.out + cpack.err;
        const QStringList debs
            = QDir(work).entryList({ QStringLiteral("*.deb") }, QDir::Files, QDir::Name);
        if (cpack.exitCode != 0 || debs.size() != 1)
            return;
        s_deb = work + u'/' + debs.first();
        s_root = work + QStringLiteral("/root");
        if (run(QStringLiteral("dpkg-deb"), { QStringLiteral("-x"), s_deb, s_root }).exitCode != 0)
            s_root.clear();
    }
    static void TearDownTestSuite() { s_work.reset(); }

    void SetUp() override
    {
        ASSERT_FALSE(s_deb.isEmpty()) << "cpack did not make one package:\n"
                                      << s_cpackLog.constData();
        ASSERT_FALSE(s_root.isEmpty()) << "dpkg-deb -x failed";
    }

    static QString installed(const QString& relative)
    {
        return s_root + QStringLiteral("/usr/") + relative;
    }

    static std::unique_ptr<QTemporaryDir> s_work;
    static QByteArray s_cpackLog;
    static QString s_deb;
    static QString s_root;
};

std::unique_ptr<QTemporaryDir> PackagingTest::s_work;
QByteArray PackagingTest::s_cpackLog;
QString PackagingTest::s_deb;
QString PackagingTest::s_root;

TEST_F(PackagingTest, ControlFieldsNameTheProjectAndEveryLibraryPackage)
{
    const QString arch = QString::fromUtf8(
        run(QStringLiteral("dpkg"), { QStringLiteral("--print-architecture") }).out)
                             .trimmed();
    EXPECT_EQ(QFileInfo(s_deb).fileName(),
        QStringLiteral("tavro-viewer_%1_%2.deb").arg(QStringLiteral(TAVRO_VERSION), arch));

    const ToolRun info = run(QStringLiteral("dpkg-deb"), { QStringLiteral("-f"), s_deb });
    ASSERT_EQ(info.exitCode, 0) << info.err.constData();
    const QMap<QString, QString> fields = controlFields(info.out);
    EXPECT_EQ(fields.value(QStringLiteral("Package")), QStringLiteral("tavro-viewer"));
    EXPECT_EQ(fields.value(QStringLiteral("Version")), QStringLiteral(TAVRO_VERSION));
    EXPECT_EQ(fields.value(QStringLiteral("Architecture")), arch);
    EXPECT_EQ(fields.value(QStringLiteral("Section")), QStringLiteral("video"));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[^<>]+ <[^@<>\\s]+@[^@<>\\s]+>$"))
                    .match(fields.value(QStringLiteral("Maintainer")))
                    .hasMatch())
        << fields.value(QStringLiteral("Maintainer")).toStdString();
    EXPECT_TRUE(fields.value(QStringLiteral("Homepage")).startsWith(QLatin1String("https://")));
    // A one-line summary, then a long description.
    const QStringList description = fields.value(QStringLiteral("Description")).split(u'\n');
    ASSERT_GE(description.size(), 3);
    EXPECT_LE(description.first().size(), 80);

    // Every library the programs load comes from a package named in Depends
    // (dpkg-shlibdeps), and so do the pieces loaded at run time.
    const QSet<QString> depends = packageNames(fields.value(QStringLiteral("Depends")));
    for (const char* needed : { "ffmpeg", "libqt6webenginecore6-bin", "libqt6svg6" })
        EXPECT_TRUE(depends.contains(QLatin1String(needed))) << needed;
    for (const QString& program :
        { installed(QStringLiteral("bin/tavro")), installed(QStringLiteral("bin/tavro-viewer")) }) {
        const QMap<QString, QString> linked = linkedPackages(program);
        EXPECT_GT(linked.size(), 2) << program.toStdString();
        for (auto it = linked.cbegin(); it != linked.cend(); ++it)
            EXPECT_TRUE(depends.contains(it.key()))
                << program.toStdString() << " links " << it.value().toStdString() << " of "
                << it.key().toStdString();
    }
    // The map window's QML modules are loaded by name at run time: no
    // library dependency brings them, Depends must.
    const QMap<QString, QString> qml
        = qmlImportPackages(QStringLiteral(TAVRO_SOURCE_DIR "/resources/map/MapHost.qml"));
    EXPECT_GE(qml.size(), 2);
    for (auto it = qml.cbegin(); it != qml.cend(); ++it)
        EXPECT_TRUE(depends.contains(it.key())) << "QML module " << it.value().toStdString()
                                                << " comes from " << it.key().toStdString();
}

TEST_F(PackagingTest, FileListHoldsTheProgramsAndTheirDesktopFilesOnly)
{
    const ToolRun contents = run(QStringLiteral("dpkg-deb"), { QStringLiteral("-c"), s_deb });
    ASSERT_EQ(contents.exitCode, 0) << contents.err.constData();
    QSet<QString> files;
    for (const QString& line : QString::fromUtf8(contents.out).split(u'\n', Qt::SkipEmptyParts)) {
        // "-rwxr-xr-x root/root 123 2026-11-22 12:00 ./usr/bin/tavro"
        const QStringList columns = line.simplified().split(u' ');
        ASSERT_GE(columns.size(), 6) << line.toStdString();
        EXPECT_EQ(columns[1], QStringLiteral("root/root")) << line.toStdString();
        if (columns[0].startsWith(u'd'))
            continue;
        const QString path = columns[5];
        files.insert(path);
        const bool program = path.startsWith(QLatin1String("./usr/bin/"));
        EXPECT_EQ(columns[0], program ? QStringLiteral("-rwxr-xr-x") : QStringLiteral("-rw-r--r--"))
            << path.toStdString();
    }
    const QSet<QString> expected {
        QStringLiteral("./usr/bin/tavro"),
        QStringLiteral("./usr/bin/tavro-viewer"),
        QStringLiteral("./usr/share/applications/%1.desktop").arg(kDesktopId),
        QStringLiteral("./usr/share/metainfo/%1.metainfo.xml").arg(kDesktopId),
        QStringLiteral("./usr/share/icons/hicolor/scalable/apps/%1.svg").arg(kDesktopId),
        QStringLiteral("./usr/share/icons/hicolor/256x256/apps/%1.png").arg(kDesktopId),
        QStringLiteral("./usr/share/man/man1/tavro.1.gz"),
        QStringLiteral("./usr/share/man/man1/tavro-viewer.1.gz"),
        QStringLiteral("./usr/share/bash-completion/completions/tavro"),
        QStringLiteral("./usr/share/bash-completion/completions/tavro-viewer"),
    };
    EXPECT_EQ(files, expected);

    // The programs are stripped and look nowhere into the build tree.
    for (const QString& program :
        { installed(QStringLiteral("bin/tavro")), installed(QStringLiteral("bin/tavro-viewer")) }) {
        const ToolRun sections = run(
            QStringLiteral("readelf"), { QStringLiteral("-S"), QStringLiteral("-d"), program });
        ASSERT_EQ(sections.exitCode, 0);
        EXPECT_FALSE(sections.out.contains(".debug_info")) << program.toStdString();
        EXPECT_FALSE(sections.out.contains("RPATH") || sections.out.contains("RUNPATH"))
            << program.toStdString();
        QFile file(program);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_FALSE(file.readAll().contains(QByteArrayLiteral(TAVRO_BUILD_DIR)))
            << program.toStdString();
    }
    EXPECT_EQ(pngSize(installed(
                  QStringLiteral("share/icons/hicolor/256x256/apps/%1.png").arg(kDesktopId))),
        QSize(256, 256));
}

TEST_F(PackagingTest, UnpackedToolRunsOnACard)
{
    const QString tavro = installed(QStringLiteral("bin/tavro"));
    const ToolRun version = run(tavro, { QStringLiteral("--version") });
    EXPECT_EQ(version.exitCode, 0) << version.err.constData();
    EXPECT_EQ(version.out, QByteArray("tavro " TAVRO_VERSION "\n"));

    CardBuilder card;
    card.setupCfg(SetupCfgBuilder(464).productName("Dravi").version("1.02.17").localId(3).bytes());
    const ToolRun identify
        = run(tavro, { QStringLiteral("card"), QStringLiteral("identify"), card.root() });
    ASSERT_EQ(identify.exitCode, 0) << identify.err.constData();
    const QJsonObject model = QJsonDocument::fromJson(identify.out).object();
    EXPECT_EQ(model.value(QStringLiteral("modelName")).toString(), QStringLiteral("Dravi"));
    EXPECT_EQ(model.value(QStringLiteral("version")).toString(), QStringLiteral("1.02.17"));

    // The viewer starts far enough to answer (no display needed for that).
    const ToolRun viewer = run(installed(QStringLiteral("bin/tavro-viewer")),
        { QStringLiteral("--version") }, { QStringLiteral("QT_QPA_PLATFORM=offscreen") });
    EXPECT_EQ(viewer.exitCode, 0) << viewer.err.constData();
    EXPECT_EQ(viewer.out, QByteArray("tavro-viewer " TAVRO_VERSION "\n"));
}

TEST_F(PackagingTest, DesktopEntryAndMetainfoValidateAndAgree)
{
    const QString desktop
        = installed(QStringLiteral("share/applications/%1.desktop").arg(kDesktopId));
    const ToolRun desktopCheck = run(QStringLiteral("desktop-file-validate"), { desktop });
    EXPECT_EQ(desktopCheck.exitCode, 0);
    EXPECT_TRUE((desktopCheck.out + desktopCheck.err).trimmed().isEmpty())
        << (desktopCheck.out + desktopCheck.err).constData();

    const QString metainfo
        = installed(QStringLiteral("share/metainfo/%1.metainfo.xml").arg(kDesktopId));
    const ToolRun metainfoCheck = run(QStringLiteral("appstreamcli"),
        { QStringLiteral("validate"), QStringLiteral("--no-net"), QStringLiteral("--no-color"),
            metainfo });
    EXPECT_EQ(metainfoCheck.exitCode, 0) << metainfoCheck.out.constData();
    EXPECT_FALSE(QRegularExpression(QStringLiteral("(^|\\n)[EW]: "))
                     .match(QString::fromUtf8(metainfoCheck.out))
                     .hasMatch())
        << metainfoCheck.out.constData();

    // The entry starts the installed viewer with the desktop's file URLs and
    // offers it for clip types the system knows.
    const QMap<QString, QString> entry = desktopEntry(desktop);
    const QString exec = entry.value(QStringLiteral("Exec"));
    EXPECT_EQ(exec, QStringLiteral("tavro-viewer %U"));
    EXPECT_TRUE(
        QFileInfo(installed(QStringLiteral("bin/")) + exec.section(u' ', 0, 0)).isExecutable());
    const QString icon = entry.value(QStringLiteral("Icon"));
    EXPECT_TRUE(QFileInfo::exists(
        installed(QStringLiteral("share/icons/hicolor/scalable/apps/%1.svg").arg(icon))));
    const QStringList types
        = entry.value(QStringLiteral("MimeType")).split(u';', Qt::SkipEmptyParts);
    EXPECT_TRUE(types.contains(QStringLiteral("video/mp4")));
    EXPECT_TRUE(types.contains(QStringLiteral("video/quicktime")));
    EXPECT_FALSE(types.contains(QStringLiteral("inode/directory")));
    const QString aliases
        = QString::fromUtf8(TestFiles::read(QStringLiteral("/usr/share/mime/aliases")));
    for (const QString& type : types) {
        EXPECT_TRUE(type.startsWith(QLatin1String("video/")));
        EXPECT_TRUE(QFileInfo::exists(QStringLiteral("/usr/share/mime/%1.xml").arg(type))
            || aliases.contains(u'\n' + type + u' ') || aliases.startsWith(type + u' '))
            << "unknown MIME type " << type.toStdString();
    }

    // The metainfo launches that entry, its newest release is this version,
    // and every screenshot it names is in the source tree, small, at its size.
    QFile file(metainfo);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QString launchable;
    QStringList releases;
    int screenshots = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("launchable")) {
            launchable = xml.readElementText();
        } else if (xml.name() == QLatin1String("release")) {
            releases.append(xml.attributes().value(QStringLiteral("version")).toString());
        } else if (xml.name() == QLatin1String("image")) {
            const QSize declared(xml.attributes().value(QStringLiteral("width")).toInt(),
                xml.attributes().value(QStringLiteral("height")).toInt());
            const QString url = xml.readElementText().trimmed();
            const QString name = url.section(QStringLiteral("/resources/screenshots/"), 1);
            ASSERT_FALSE(name.isEmpty()) << url.toStdString();
            const QString local = QStringLiteral(TAVRO_SOURCE_DIR "/resources/screenshots/") + name;
            EXPECT_EQ(pngSize(local), declared) << local.toStdString();
            EXPECT_LT(QFileInfo(local).size(), 500 * 1024) << local.toStdString();
            ++screenshots;
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(launchable, kDesktopId + QStringLiteral(".desktop"));
    ASSERT_FALSE(releases.isEmpty());
    EXPECT_EQ(releases.first(), QStringLiteral(TAVRO_VERSION));
    EXPECT_GE(screenshots, 1);
}

TEST_F(PackagingTest, ManPagesRenderWithoutWarningsAndDocumentEveryCommand)
{
    // Plain text, as man writes it to a pipe.
    const QStringList env { QStringLiteral("MANWIDTH=80"), QStringLiteral("LC_ALL=C.UTF-8") };
    QMap<QString, QString> pages;
    for (const QString& page : { QStringLiteral("tavro"), QStringLiteral("tavro-viewer") }) {
        const ToolRun man = run(QStringLiteral("man"),
            { QStringLiteral("--warnings"), QStringLiteral("-E"), QStringLiteral("UTF-8"),
                QStringLiteral("-l"),
                installed(QStringLiteral("share/man/man1/%1.1.gz").arg(page)) },
            env);
        EXPECT_EQ(man.exitCode, 0) << page.toStdString();
        EXPECT_TRUE(man.err.trimmed().isEmpty())
            << page.toStdString() << ": " << man.err.constData();
        pages[page] = QString::fromUtf8(man.out);
        EXPECT_TRUE(pages[page].contains(QStringLiteral("NAME\n       %1 - ").arg(page)))
            << pages[page].left(300).toStdString();
    }

    // Every command the tool lists has its entry in tavro(1).
    const QStringList commands = cliCommands(installed(QStringLiteral("bin/tavro")));
    EXPECT_GE(commands.size(), 7);
    for (const QString& command : commands)
        EXPECT_TRUE(
            pages[QStringLiteral("tavro")].contains(QStringLiteral("tavro ") + command + u' '))
            << "tavro(1) lacks " << command.toStdString();

    // Every option of the viewer's --help has its entry in tavro-viewer(1).
    const ToolRun help = run(installed(QStringLiteral("bin/tavro-viewer")),
        { QStringLiteral("--help") }, { QStringLiteral("QT_QPA_PLATFORM=offscreen") });
    static const QRegularExpression option(
        QStringLiteral("^\\s+(?:-\\w, )?(--[a-z-]+)"), QRegularExpression::MultilineOption);
    auto it = option.globalMatch(QString::fromUtf8(help.out));
    int options = 0;
    while (it.hasNext()) {
        const QString name = it.next().captured(1);
        EXPECT_TRUE(pages[QStringLiteral("tavro-viewer")].contains(name))
            << "tavro-viewer(1) lacks " << name.toStdString();
        ++options;
    }
    EXPECT_GE(options, 5);
}

TEST_F(PackagingTest, BashCompletionOffersEveryCommandAndItsOptions)
{
    const QString bashCompletion = QStringLiteral("/usr/share/bash-completion/bash_completion");
    if (!QFileInfo::exists(bashCompletion))
        GTEST_SKIP() << "bash-completion is not installed";
    // Completes the words as the shell would at the end of the line.
    auto complete = [&](const QString& function, const QString& file, const QStringList& words) {
        QString quoted;
        for (const QString& word : words)
            quoted += QStringLiteral(" '") + word + u'\'';
        const QString script = QStringLiteral(
            "source %1; source %2; COMP_WORDS=(%3); COMP_CWORD=$((${#COMP_WORDS[@]}-1)); "
            "COMP_LINE=\"${COMP_WORDS[*]}\"; COMP_POINT=${#COMP_LINE}; %4; "
            "printf '%s\\n' \"${COMPREPLY[@]}\"")
                                   .arg(bashCompletion, file, quoted, function);
        const ToolRun bash = run(QStringLiteral("bash"), { QStringLiteral("-c"), script });
        EXPECT_EQ(bash.exitCode, 0) << bash.err.constData();
        return QString::fromUtf8(bash.out).split(u'\n', Qt::SkipEmptyParts);
    };
    const QString tavroFile = installed(QStringLiteral("share/bash-completion/completions/tavro"));
    const QStringList first
        = complete(QStringLiteral("_tavro"), tavroFile, { QStringLiteral("tavro"), {} });
    const QStringList commands = cliCommands(installed(QStringLiteral("bin/tavro")));
    for (const QString& command : commands)
        EXPECT_TRUE(first.contains(command)) << "no completion for " << command.toStdString();

    struct Case {
        QStringList words;
        QStringList offered;
    };
    const QList<Case> cases {
        { { QStringLiteral("tavro"), QStringLiteral("card"), {} },
            { QStringLiteral("identify"), QStringLiteral("format"),
                QStringLiteral("touch-reset") } },
        { { QStringLiteral("tavro"), QStringLiteral("card"), QStringLiteral("format"),
              QStringLiteral("/tmp"), QStringLiteral("--") },
            { QStringLiteral("--yes") } },
        { { QStringLiteral("tavro"), QStringLiteral("telemetry"), QStringLiteral("--format"), {} },
            { QStringLiteral("json"), QStringLiteral("csv"), QStringLiteral("gpx"),
                QStringLiteral("kml"), QStringLiteral("geojson") } },
        { { QStringLiteral("tavro"), QStringLiteral("telemetry"), QStringLiteral("--loader"), {} },
            { QStringLiteral("auto"), QStringLiteral("general"), QStringLiteral("kel"),
                QStringLiteral("native") } },
        { { QStringLiteral("tavro"), QStringLiteral("settings"), QStringLiteral("set"),
              QStringLiteral("/tmp"), QStringLiteral("--a") },
            { QStringLiteral("--answer") } },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.words.join(u' ').toStdString());
        QStringList offered = complete(QStringLiteral("_tavro"), tavroFile, c.words);
        offered.sort();
        QStringList wanted = c.offered;
        wanted.sort();
        EXPECT_EQ(offered, wanted);
    }
    const QStringList viewer = complete(QStringLiteral("_tavro_viewer"),
        installed(QStringLiteral("share/bash-completion/completions/tavro-viewer")),
        { QStringLiteral("tavro-viewer"), QStringLiteral("--") });
    EXPECT_TRUE(viewer.contains(QStringLiteral("--card")));
    EXPECT_TRUE(viewer.contains(QStringLiteral("--no-splash")));
}

} // namespace
