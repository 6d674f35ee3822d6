// The Debian package as a user gets it: CPack builds the .deb from this build,
// and the checks look at what dpkg sees (control fields, file list) and at the
// package unpacked into a temporary root (the programs run from there, the
// desktop entry, metainfo, man pages and bash completion as the desktop and
// the shell read them).
#include "CardBuilder.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString kDesktopId = QStringLiteral("io.github.tavro.Viewer");

struct ToolRun {
    int exitCode = -1;
    QString out, err;
};

ToolRun run(const QString& program, const QStringList& args, const QStringList& env = {},
    int timeoutMs = 60000)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& entry : env)
        environment.insert(entry.section(u'=', 0, 0), entry.section(u'=', 1));
    process.setProcessEnvironment(environment);
    process.start(program, args);
    if (!process.waitForFinished(timeoutMs) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        return { -1, {}, program + QStringLiteral(" did not finish") };
    }
    return { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError()) };
}

// The package owning a file ("libqt6core6: /usr/lib/…" → "libqt6core6"), or "".
QString owner(const QString& path)
{
    // With merged /usr, dpkg knows a file under one of its two names.
    for (const QString& candidate :
        { path, QFileInfo(path).canonicalFilePath(), QStringLiteral("/usr") + path }) {
        const ToolRun dpkg = run(QStringLiteral("dpkg"), { QStringLiteral("-S"), candidate });
        if (!path.isEmpty() && dpkg.exitCode == 0)
            return dpkg.out.section(u':', 0, 0).section(u',', 0, 0);
    }
    return {};
}

// The commands `tavro --help` lists ("  tavro card identify DIR" → "card").
QStringList cliCommands(const QString& tavro)
{
    const ToolRun help = run(tavro, { QStringLiteral("--help") });
    QStringList commands;
    static const QRegularExpression usage(
        QStringLiteral("^\\s+tavro ([a-z-]+)"), QRegularExpression::MultilineOption);
    for (auto it = usage.globalMatch(help.out + help.err); it.hasNext();) {
        if (const QString command = it.next().captured(1); !commands.contains(command))
            commands << command;
    }
    return commands;
}

class PackagingTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_work = std::make_unique<QTemporaryDir>();
        // The package of this build, in a folder of its own so that a
        // `tools/dev.sh package` next to it is not disturbed.
        const ToolRun cpack = run(QStringLiteral(TAVRO_CPACK_COMMAND),
            { "-G", "DEB", "--config", TAVRO_BUILD_DIR "/CPackConfig.cmake", "-B", s_work->path() },
            {}, 300000);
        s_cpackLog = cpack.out + cpack.err;
        const QStringList debs = QDir(s_work->path()).entryList({ QStringLiteral("*.deb") });
        if (cpack.exitCode != 0 || debs.size() != 1)
            return;
        s_deb = s_work->filePath(debs.first());
        if (run(QStringLiteral("dpkg-deb"), { "-x", s_deb, s_work->filePath("root") }).exitCode
            == 0)
            s_root = s_work->filePath("root");
    }
    static void TearDownTestSuite() { s_work.reset(); }
    void SetUp() override
    {
        ASSERT_FALSE(s_deb.isEmpty()) << "cpack did not make one package:\n"
                                      << s_cpackLog.toStdString();
        ASSERT_FALSE(s_root.isEmpty()) << "dpkg-deb -x failed";
    }
    static QString installed(const QString& relative)
    {
        return s_root + QStringLiteral("/usr/") + relative;
    }
    static QString field(const QString& name)
    {
        return run(QStringLiteral("dpkg-deb"), { "-f", s_deb, name }).out.trimmed();
    }

    static inline std::unique_ptr<QTemporaryDir> s_work;
    static inline QString s_cpackLog, s_deb, s_root;
};

TEST_F(PackagingTest, ControlFieldsNameTheProjectAndEveryLibraryPackage)
{
    const QString arch
        = run(QStringLiteral("dpkg"), { QStringLiteral("--print-architecture") }).out.trimmed();
    EXPECT_EQ(QFileInfo(s_deb).fileName(),
        QStringLiteral("tavro-viewer_" TAVRO_VERSION "_%1.deb").arg(arch));
    EXPECT_EQ(QStringList(
                  { field("Package"), field("Version"), field("Architecture"), field("Section") }),
        QStringList({ "tavro-viewer", TAVRO_VERSION, arch, "video" }));
    EXPECT_TRUE(field("Maintainer").contains(u'@')
        && field("Homepage").startsWith(QLatin1String("https://")));
    EXPECT_GE(field("Description").count(u'\n'), 2); // a summary line, then a long description
    // Every library the programs link (their NEEDED entries, resolved as the
    // loader does) comes from a package named in Depends, and so do the
    // pieces loaded at run time and the map window's QML modules.
    QSet<QString> depends;
    for (const QString& part :
        field("Depends").split(QRegularExpression("[,|]"), Qt::SkipEmptyParts))
        depends << part.trimmed().section(u' ', 0, 0).section(u':', 0, 0);
    for (const char* needed : { "ffmpeg", "libqt6webenginecore6-bin", "libqt6svg6" })
        EXPECT_TRUE(depends.contains(QLatin1String(needed))) << needed;
    for (const QString& program : { installed("bin/tavro"), installed("bin/tavro-viewer") }) {
        const QString ldd = run(QStringLiteral("ldd"), { program }).out;
        const QString dynamic = run(QStringLiteral("readelf"), { "-d", program }).out;
        int linked = 0;
        for (auto it = QRegularExpression("\\(NEEDED\\).*\\[(.+)\\]").globalMatch(dynamic);
             it.hasNext();) {
            const QString soname = it.next().captured(1);
            const QString path
                = QRegularExpression("^\\s*" + QRegularExpression::escape(soname) + " => (/\\S+)",
                    QRegularExpression::MultilineOption)
                      .match(ldd)
                      .captured(1);
            // The loader itself ("ld-linux…") is no library of a package.
            if (const QString package = owner(path); !package.isEmpty() && ++linked) {
                EXPECT_TRUE(depends.contains(package))
                    << program.toStdString() << " links " << soname.toStdString();
            }
        }
        EXPECT_GT(linked, 2) << program.toStdString();
    }
    const QString qml
        = QString::fromUtf8(TestFiles::read(TAVRO_SOURCE_DIR "/resources/map/MapHost.qml"));
    int modules = 0;
    for (auto it
         = QRegularExpression("^import\\s+([A-Za-z][\\w.]*)", QRegularExpression::MultilineOption)
               .globalMatch(qml);
         it.hasNext(); ++modules) {
        const QString module = it.next().captured(1);
        const QString qmldir = QLibraryInfo::path(QLibraryInfo::QmlImportsPath) + u'/'
            + QString(module).replace(u'.', u'/') + QStringLiteral("/qmldir");
        EXPECT_TRUE(depends.contains(owner(qmldir))) << "QML module " << module.toStdString();
    }
    EXPECT_GE(modules, 2);
}

TEST_F(PackagingTest, FileListHoldsTheProgramsAndTheirDesktopFilesOnly)
{
    const ToolRun contents = run(QStringLiteral("dpkg-deb"), { "-c", s_deb });
    ASSERT_EQ(contents.exitCode, 0) << contents.err.toStdString();
    QSet<QString> files;
    for (const QString& line : contents.out.split(u'\n', Qt::SkipEmptyParts)) {
        // "-rwxr-xr-x root/root 123 2026-11-22 12:00 ./usr/bin/tavro"
        const QStringList columns = line.simplified().split(u' ');
        ASSERT_GE(columns.size(), 6) << line.toStdString();
        EXPECT_EQ(columns[1], QStringLiteral("root/root")) << line.toStdString();
        if (columns[0].startsWith(u'd'))
            continue;
        files << columns[5];
        EXPECT_EQ(columns[0],
            columns[5].startsWith(QLatin1String("./usr/bin/")) ? "-rwxr-xr-x" : "-rw-r--r--")
            << line.toStdString();
    }
    EXPECT_EQ(files,
        (QSet<QString> { "./usr/bin/tavro", "./usr/bin/tavro-viewer",
            "./usr/share/applications/" + kDesktopId + ".desktop",
            "./usr/share/metainfo/" + kDesktopId + ".metainfo.xml",
            "./usr/share/icons/hicolor/scalable/apps/" + kDesktopId + ".svg",
            "./usr/share/icons/hicolor/256x256/apps/" + kDesktopId + ".png",
            "./usr/share/man/man1/tavro.1.gz", "./usr/share/man/man1/tavro-viewer.1.gz",
            "./usr/share/bash-completion/completions/tavro",
            "./usr/share/bash-completion/completions/tavro-viewer" }));
    // The programs are stripped and look nowhere into the build tree.
    for (const QString& program : { installed("bin/tavro"), installed("bin/tavro-viewer") }) {
        const QString sections = run(QStringLiteral("readelf"), { "-S", "-d", program }).out;
        EXPECT_FALSE(sections.contains(".debug_info") || sections.contains("RPATH")
            || sections.contains("RUNPATH"))
            << program.toStdString();
        EXPECT_FALSE(TestFiles::read(program).contains(TAVRO_BUILD_DIR)) << program.toStdString();
    }
    EXPECT_EQ(
        QImageReader(installed("share/icons/hicolor/256x256/apps/" + kDesktopId + ".png")).size(),
        QSize(256, 256));
}

TEST_F(PackagingTest, UnpackedProgramsRunOnACard)
{
    EXPECT_EQ(run(installed("bin/tavro"), { "--version" }).out, "tavro " TAVRO_VERSION "\n");
    // The viewer starts far enough to answer (no display needed for that).
    EXPECT_EQ(
        run(installed("bin/tavro-viewer"), { "--version" }, { "QT_QPA_PLATFORM=offscreen" }).out,
        "tavro-viewer " TAVRO_VERSION "\n");
    CardBuilder card;
    card.setupCfg(SetupCfgBuilder(464).productName("Dravi").version("1.02.17").localId(3).bytes());
    const ToolRun identify = run(installed("bin/tavro"), { "card", "identify", card.root() });
    ASSERT_EQ(identify.exitCode, 0) << identify.err.toStdString();
    const QJsonObject model = QJsonDocument::fromJson(identify.out.toUtf8()).object();
    EXPECT_EQ(model.value("modelName").toString() + u' ' + model.value("version").toString(),
        "Dravi 1.02.17");
}

TEST_F(PackagingTest, DesktopEntryAndMetainfoValidateAndAgree)
{
    const QString desktop = installed("share/applications/" + kDesktopId + ".desktop");
    const ToolRun desktopCheck = run(QStringLiteral("desktop-file-validate"), { desktop });
    EXPECT_EQ(desktopCheck.exitCode, 0);
    EXPECT_EQ((desktopCheck.out + desktopCheck.err).trimmed(), QString());
    const QString metainfo = installed("share/metainfo/" + kDesktopId + ".metainfo.xml");
    const ToolRun metainfoCheck
        = run(QStringLiteral("appstreamcli"), { "validate", "--no-net", "--no-color", metainfo });
    EXPECT_EQ(metainfoCheck.exitCode, 0) << metainfoCheck.out.toStdString();
    EXPECT_FALSE(metainfoCheck.out.contains(QRegularExpression("(^|\\n)[EW]: ")))
        << metainfoCheck.out.toStdString();

    // The entry starts the installed viewer with the desktop's file URLs and
    // offers it for clip types the system knows (';' separates list items).
    QMap<QString, QString> entry;
    for (const QString& line : QString::fromUtf8(TestFiles::read(desktop)).split(u'\n'))
        entry.insert(line.section(u'=', 0, 0).trimmed(), line.section(u'=', 1).trimmed());
    EXPECT_EQ(entry.value("Exec"), QStringLiteral("tavro-viewer %U"));
    EXPECT_TRUE(QFileInfo(installed("bin/tavro-viewer")).isExecutable());
    EXPECT_TRUE(QFileInfo::exists(
        installed("share/icons/hicolor/scalable/apps/" + entry.value("Icon") + ".svg")));
    const QStringList types = entry.value("MimeType").split(u';', Qt::SkipEmptyParts);
    EXPECT_TRUE(types.contains("video/mp4") && types.contains("video/quicktime"));
    const QString aliases
        = QString::fromUtf8(TestFiles::read(QStringLiteral("/usr/share/mime/aliases")));
    for (const QString& type : types) {
        EXPECT_TRUE(type.startsWith(QLatin1String("video/")));
        EXPECT_TRUE(QFileInfo::exists("/usr/share/mime/" + type + ".xml")
            || ('\n' + aliases).contains('\n' + type + ' '))
            << "unknown MIME type " << type.toStdString();
    }

    // The metainfo launches that entry and its newest release is this version.
    const QString xml = QString::fromUtf8(TestFiles::read(metainfo));
    EXPECT_TRUE(
        xml.contains("<launchable type=\"desktop-id\">" + kDesktopId + ".desktop</launchable>"));
    EXPECT_EQ(
        QRegularExpression("<release version=\"([^\"]+)\"").match(xml).captured(1), TAVRO_VERSION);
    EXPECT_TRUE(xml.contains("<screenshot"));
}

TEST_F(PackagingTest, ManPagesAndBashCompletionCoverEveryCommand)
{
    // Plain text, as man writes it to a pipe, without warnings.
    QMap<QString, QString> pages;
    for (const QString page : { "tavro", "tavro-viewer" }) {
        const ToolRun man = run(QStringLiteral("man"),
            { "--warnings", "-E", "UTF-8", "-l", installed("share/man/man1/" + page + ".1.gz") },
            { "MANWIDTH=80", "LC_ALL=C.UTF-8" });
        EXPECT_EQ(man.exitCode, 0) << page.toStdString();
        EXPECT_EQ(man.err.trimmed(), QString()) << page.toStdString();
        pages[page] = man.out;
        EXPECT_TRUE(man.out.contains("NAME\n       " + page + " - "))
            << man.out.left(300).toStdString();
    }
    // Every command the tool lists is in tavro(1) and completes; every option
    // of the viewer's --help is in tavro-viewer(1).
    const QStringList commands = cliCommands(installed("bin/tavro"));
    EXPECT_GE(commands.size(), 7);
    for (const QString& command : commands) {
        EXPECT_TRUE(pages["tavro"].contains("tavro " + command + ' '))
            << "tavro(1) lacks " << command.toStdString();
    }
    const QString help
        = run(installed("bin/tavro-viewer"), { "--help" }, { "QT_QPA_PLATFORM=offscreen" }).out;
    int options = 0;
    for (auto it
         = QRegularExpression("^\\s+(?:-\\w, )?(--[a-z-]+)", QRegularExpression::MultilineOption)
               .globalMatch(help);
         it.hasNext(); ++options)
        EXPECT_TRUE(pages["tavro-viewer"].contains(it.next().captured(1)))
            << "tavro-viewer(1) lacks an option";
    EXPECT_GE(options, 5);

    const QString bashCompletion = QStringLiteral("/usr/share/bash-completion/bash_completion");
    if (!QFileInfo::exists(bashCompletion))
        GTEST_SKIP() << "bash-completion is not installed";
    // The words completed as the shell would at the end of the line.
    const auto complete = [&](const QString& program, const QStringList& words) {
        const QString script
            = QStringLiteral("source %1; source %2; COMP_WORDS=('%3'); "
                             "COMP_CWORD=$((${#COMP_WORDS[@]}-1)); COMP_LINE=\"${COMP_WORDS[*]}\"; "
                             "COMP_POINT=${#COMP_LINE}; _%4; printf '%s\\n' \"${COMPREPLY[@]}\"")
                  .arg(bashCompletion, installed("share/bash-completion/completions/" + program),
                      words.join("' '"), QString(program).replace(u'-', u'_'));
        QStringList offered
            = run(QStringLiteral("bash"), { "-c", script }).out.split(u'\n', Qt::SkipEmptyParts);
        offered.sort();
        return offered;
    };
    const QStringList first = complete("tavro", { "tavro", "" });
    for (const QString& command : commands)
        EXPECT_TRUE(first.contains(command)) << "no completion for " << command.toStdString();
    const std::pair<QStringList, QStringList> cases[] = {
        { { "tavro", "card", "" }, { "format", "identify", "touch-reset" } },
        { { "tavro", "telemetry", "--format", "" }, { "csv", "geojson", "gpx", "json", "kml" } },
        { { "tavro", "settings", "set", "/tmp", "--a" }, { "--answer" } }
    };
    for (const auto& [words, offered] : cases)
        EXPECT_EQ(complete("tavro", words), offered) << words.join(u' ').toStdString();
    const QStringList viewer = complete("tavro-viewer", { "tavro-viewer", "--" });
    EXPECT_TRUE(viewer.contains("--card") && viewer.contains("--no-splash"));
}

} // namespace
