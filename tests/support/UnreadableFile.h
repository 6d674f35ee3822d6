#pragma once

#include <QString>

// Makes an existing file unreadable for this thread while the object lives:
// no read permission for anyone, and, for root (whom permission bits do not
// stop), without the thread's power to override them. Writes to the folder
// stay allowed, so a program that replaces the file still can. The file's
// mode and the thread's powers come back when the object goes.
class UnreadableFile {
public:
    explicit UnreadableFile(const QString& path);
    ~UnreadableFile();
    UnreadableFile(const UnreadableFile&) = delete;
    UnreadableFile& operator=(const UnreadableFile&) = delete;

    // False when this system lets the thread read the file all the same
    // (the test then has nothing to check).
    bool holds() const;

private:
    QString m_path;
    unsigned int m_mode = 0;
    bool m_droppedOverride = false;
};
