#include "FakeCardSystem.h"

#include "TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMutexLocker>

#include <gtest/gtest.h>

namespace {

void link(const QString& target, const QString& path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    EXPECT_TRUE(QFile::link(target, path)) << qPrintable(path);
}

QString busPath(const QString& bus)
{
    static const QHash<QString, QString> kPaths {
        { "usb", "pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0" },
        { "sd", "pci0000:00/0000:00:1c.0/mmc_host/mmc0/mmc0:aaaa" },
        { "sata", "pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0" }
    };
    return kPaths.value(bus, QStringLiteral("virtual"));
}

// The kernel writes blanks in mountinfo paths as "\040".
QString escapeMountPath(QString path)
{
    return path.replace(u'\\', QStringLiteral("\\134")).replace(u' ', QStringLiteral("\\040"));
}

} // namespace

FakeCardSystem::FakeCardSystem()
{
    TestFiles::write(m_dir.path() + QStringLiteral("/mountinfo"), {});
    QDir().mkpath(m_dir.path() + QStringLiteral("/proc"));
}

void FakeCardSystem::build(const QString& script, ScriptedRunner& runner)
{
    for (const QString& statement : script.split(u';', Qt::SkipEmptyParts)) {
        QStringList w = statement.split(u' ', Qt::SkipEmptyParts);
        for (QString& word : w)
            word.replace(u'~', u' ');
        const QString verb = w.value(0);
        if (verb == QLatin1String("disk")) {
            addDisk(w);
        } else if (verb == QLatin1String("part")) {
            const QString folder = m_diskFolders.value(w[1]) + u'/' + w[2];
            TestFiles::write(folder + QStringLiteral("/partition"), "1\n");
            linkDevice(w[2], folder, w[3]);
        } else if (verb == QLatin1String("loop")) {
            addDisk({ verb, w[1], QStringLiteral("7:") + w[2], QStringLiteral("virtual") });
            QString backing = w[3];
            if (backing == QLatin1String("image")) {
                backing = folder(QStringLiteral("images")) + u'/' + w[1] + QStringLiteral(".img");
                TestFiles::write(backing, {});
            }
            TestFiles::write(m_diskFolders.value(w[1]) + QStringLiteral("/loop/backing_file"),
                backing.toUtf8() + '\n');
        } else if (verb == QLatin1String("mapper")) {
            addDisk({ verb, w[1], QStringLiteral("254:") + w[2], QStringLiteral("virtual") });
            const QString folder = m_diskFolders.value(w[1]);
            TestFiles::write(folder + QStringLiteral("/dm/name"), w[3].toUtf8() + '\n');
            for (const QString& slave : w[4].split(u','))
                link(sys() + QStringLiteral("/class/block/") + slave,
                    folder + QStringLiteral("/slaves/") + slave);
            link(
                QStringLiteral("../") + w[1], m_dir.path() + QStringLiteral("/dev/mapper/") + w[3]);
        } else if (verb == QLatin1String("mount")) {
            addMount(w);
        } else if (verb == QLatin1String("fuse")) {
            addFuseDaemon(w);
        } else if (verb == QLatin1String("label")) {
            link(QStringLiteral("../../") + w[2],
                m_dir.path() + QStringLiteral("/dev/disk/by-label/") + w[1]);
        } else if (verb == QLatin1String("blkid")) {
            const QString label = w[3] == QLatin1String("-") ? QString() : w[3];
            runner.blkid(w[1], w[2], label, w.value(4), w.value(5, QStringLiteral("1234-ABCD")));
        } else if (verb == QLatin1String("fail")) {
            runner.fail(w[1], w[2].toInt());
        } else if (verb == QLatin1String("udisks")) {
            // UDisks2 knows the device: it answers introspection, its serial
            // (1234-ABCD), and mounts it again at DASHCAM1.
            const QString known = udisksBlockObjectPath(w[1]);
            runner.script(QStringLiteral("gdbus"), [known](const QStringList& args) {
                if (!args.contains(known))
                    return CommandResult { true, 1, {} };
                if (args.value(0) == QLatin1String("introspect"))
                    return CommandResult { true, 0,
                        "interface org.freedesktop.UDisks2.Filesystem {}" };
                if (args.contains(QStringLiteral("org.freedesktop.DBus.Properties.Get")))
                    return CommandResult { true, 0, "(<'1234-ABCD'>,)\n" };
                if (args.contains(QStringLiteral("org.freedesktop.UDisks2.Filesystem.Mount")))
                    return CommandResult { true, 0, "('/media/user/DASHCAM1',)\n" };
                return CommandResult { true, 0, "()\n" };
            });
        } else {
            ADD_FAILURE() << "unknown statement " << qPrintable(statement);
        }
    }
}

void FakeCardSystem::addDisk(const QStringList& w)
{
    const QString folder
        = sys() + QStringLiteral("/devices/") + busPath(w[3]) + QStringLiteral("/block/") + w[1];
    TestFiles::write(folder + QStringLiteral("/removable"),
        w.contains(QStringLiteral("removable")) ? "1\n" : "0\n");
    if (w[3] == QLatin1String("sd"))
        TestFiles::write(folder + QStringLiteral("/device/type"), "SD\n");
    linkDevice(w[1], folder, w[2]);
    m_diskFolders.insert(w[1], folder);
}

void FakeCardSystem::linkDevice(const QString& name, const QString& folder, const QString& number)
{
    TestFiles::write(folder + QStringLiteral("/dev"), number.toUtf8() + '\n');
    link(folder, sys() + QStringLiteral("/class/block/") + name);
    link(folder, sys() + QStringLiteral("/dev/block/") + number);
}

void FakeCardSystem::addMount(const QStringList& w)
{
    const QString point = w[2].startsWith(u'/') ? w[2] : folder(w[2]);
    QFile file(m_dir.path() + QStringLiteral("/mountinfo"));
    ASSERT_TRUE(file.open(QIODevice::Append));
    const int id = ++m_mountId;
    file.write(QStringLiteral("%1 1 %2 %3 %4 rw,nosuid,nodev,relatime shared:%1 - %5 %6 %7\n")
                   .arg(id)
                   .arg(w[1], escapeMountPath(w.value(6, QStringLiteral("/"))),
                       escapeMountPath(point), w[3], w[4], w.value(5, QStringLiteral("rw")))
                   .toUtf8());
}

void FakeCardSystem::addFuseDaemon(const QStringList& w)
{
    const QString process = m_dir.path() + QStringLiteral("/proc/") + w[1];
    const QString point = w[5].startsWith(u'/') ? w[5] : folder(w[5]);
    link(QStringLiteral("/dev/null"), process + QStringLiteral("/fd/0"));
    link(QStringLiteral("/dev/") + w[4], process + QStringLiteral("/fd/3"));
    link(QStringLiteral("/dev/fuse"), process + QStringLiteral("/fd/4"));
    QByteArray fdinfo = "pos:\t0\nflags:\t0100002\nmnt_id:\t24\nino:\t90\n";
    if (w.value(6) != QLatin1String("old"))
        fdinfo += "fuse_connection:\t" + w[3].toUtf8() + '\n';
    TestFiles::write(process + QStringLiteral("/fdinfo/4"), fdinfo);
    TestFiles::write(process + QStringLiteral("/cmdline"),
        ("/usr/bin/" + w[2] + "\x01-o\x01rw+\x01/dev/" + w[4] + u'\x01' + point + u'\x01')
            .toUtf8()
            .replace('\x01', '\0'));
    TestFiles::write(process + QStringLiteral("/environ"), QByteArray("PWD=/\0", 6));
}

QString FakeCardSystem::folder(const QString& relative)
{
    const QString path = m_dir.path() + QStringLiteral("/fs/") + relative;
    QDir().mkpath(path);
    return QFileInfo(path).canonicalFilePath();
}

CardFormatSystem FakeCardSystem::system(bool isRoot, bool systemBus) const
{
    CardFormatSystem system;
    system.mountInfoPath = m_dir.path() + QStringLiteral("/mountinfo");
    system.sysRoot = sys();
    system.procRoot = m_dir.path() + QStringLiteral("/proc");
    system.devRoot = m_dir.path() + QStringLiteral("/dev");
    system.protectedPaths = { QStringLiteral("/"), QStringLiteral("/home"), QStringLiteral("/usr"),
        QStringLiteral("/boot") };
    system.isRoot = isRoot;
    system.systemBus = systemBus;
    return system;
}

void ScriptedRunner::script(const QString& program, Answer answer)
{
    QMutexLocker lock(&m_mutex);
    m_answers.insert(program, std::move(answer));
}

void ScriptedRunner::fail(const QString& program, int exitCode, const QByteArray& output)
{
    script(program, [exitCode, output](const QStringList&) {
        return CommandResult { true, exitCode, output };
    });
}

void ScriptedRunner::blkid(const QString& device, const QString& type, const QString& label,
    const QString& version, const QString& serial)
{
    QString lines;
    if (!label.isEmpty())
        lines += "ID_FS_LABEL_ENC=" + QString(label).replace(u' ', QStringLiteral("\\x20")) + u'\n';
    lines += QStringLiteral("ID_FS_UUID=%1\n").arg(serial);
    if (!version.isEmpty())
        lines += QStringLiteral("ID_FS_VERSION=%1\n").arg(version);
    lines += QStringLiteral("ID_FS_TYPE=%1\nID_FS_USAGE=filesystem\n").arg(type);
    {
        QMutexLocker lock(&m_mutex);
        m_blkid.insert(QStringLiteral("/dev/") + device, lines.toUtf8());
    }
    script(QStringLiteral("blkid"), [this](const QStringList& arguments) {
        QMutexLocker lock(&m_mutex);
        const auto found = m_blkid.constFind(arguments.value(arguments.size() - 1));
        // blkid exits with 2 when it finds nothing on the device.
        return found == m_blkid.cend() ? CommandResult { true, 2, {} }
                                       : CommandResult { true, 0, *found };
    });
}

CommandResult ScriptedRunner::run(const QString& program, const QStringList& arguments)
{
    Answer answer;
    {
        QMutexLocker lock(&m_mutex);
        m_calls.append({ program, arguments });
        answer = m_answers.value(program);
    }
    return answer ? answer(arguments) : CommandResult {};
}

QList<ScriptedRunner::Call> ScriptedRunner::calls() const
{
    QMutexLocker lock(&m_mutex);
    return m_calls;
}
