#pragma once

#include <QFile>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>

#include <memory>

// Tells when a volume is mounted or unmounted. The kernel marks the process's
// mount table (/proc/self/mountinfo) as changed; each change re-reads the
// table and compares the mount points with the last reading, so a change
// reported twice emits once.
class VolumeWatcher : public QObject {
    Q_OBJECT
public:
    explicit VolumeWatcher(QObject* parent = nullptr);
    // Watches another mount table (tests use a plain file and call rescan()).
    explicit VolumeWatcher(const QString& mountInfoPath, QObject* parent = nullptr);
    ~VolumeWatcher() override;

    QStringList mountPoints() const { return m_mountPoints; }

    // Mount points of a mountinfo text, in table order (escapes decoded).
    static QStringList parseMountPoints(const QByteArray& mountInfo);

public slots:
    void rescan();

signals:
    void volumeMounted(const QString& rootPath);
    void volumeUnmounted(const QString& rootPath);

private:
    QStringList readMountPoints();

    QFile m_file;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QStringList m_mountPoints;
};
