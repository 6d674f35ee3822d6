#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// The bytes of one clip file, mapped once and shared by every parser the
// loader tries. A file that cannot be mapped (a pipe, a device) is read with
// bounded reads instead. Unmapped when the object goes away.
//
// A mapped file can shrink under the reader: the card is pulled out, or the
// camera (or a copy) truncates the file. Touching a page past the new end
// would raise SIGBUS and kill the viewer; the mapping is guarded instead: such
// a page reads as zeros from then on and isIntact() turns false, so the
// caller throws away what the parsers made of it.
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
    // False once a read ran past the end of a file that shrank while mapped.
    bool isIntact() const;

private:
    void readAll(int fd);

    void* m_mapped = nullptr;
    qsizetype m_mappedSize = 0;
    int m_guard = -1; // slot in the table of guarded mappings
    QByteArray m_read;
    QByteArrayView m_view;
    bool m_open = false;
};
