#pragma once

#include <QByteArrayView>
#include <QSize>
#include <QString>

// What a clip's container says about its pictures, read from its headers
// without decoding anything: the MP4 / QuickTime movie header and track
// headers, or the AVI main and stream headers. A trip plays clips back to
// back by these lengths, and a file whose length cannot be read is not
// played in one.
struct ClipMediaInfo {
    double seconds = 0; // the movie's length; 0 when unknown
    int videoStreams = 0; // a two-camera AVI holds the rear camera as the second
    int audioStreams = 0;
    QSize frameSize; // of the first video stream; empty when unknown

    bool isKnown() const { return seconds > 0; }

    // Every header is checked against what encloses it; nothing is
    // allocated by a size found in the file.
    static ClipMediaInfo fromBytes(QByteArrayView bytes);
    // Maps the file; nothing known for a file that cannot be read or is no
    // regular file.
    static ClipMediaInfo read(const QString& path);
};
