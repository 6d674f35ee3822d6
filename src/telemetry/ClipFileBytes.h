#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

// The bytes of one clip file, mapped once and shared by every parser the
// loader tries. Falls back to reading the file when it cannot be mapped
// (empty files, some special files). Unmapped when the object goes away.
class ClipFileBytes {
public:
    // Parsers that walk the whole clip read it in order; a reader that only
    // jumps to a few places (an MP4's boxes and text samples) says so, so that
    // the kernel does not read the video around them.
    enum class Access { Sequential, Random };

    explicit ClipFileBytes(const QString& path, Access access = Access::Sequential);
    ~ClipFileBytes();
    ClipFileBytes(const ClipFileBytes&) = delete;
    ClipFileBytes& operator=(const ClipFileBytes&) = delete;

    bool isOpen() const { return m_open; }
    QByteArrayView bytes() const { return m_view; }

private:
    QFile m_file;
    uchar* m_mapped = nullptr;
    QByteArray m_read;
    QByteArrayView m_view;
    bool m_open = false;
};
