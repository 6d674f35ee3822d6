#pragma once

#include <QByteArrayView>

#include <functional>

// Walks the chunk stream of a RIFF "AVI " file in file order: LIST chunks are
// entered (their type read, their children walked in place), every other
// chunk is skipped with its pad byte, and the data of each telemetry chunk
// ("02tx", "03tx") is handed over. Sizes are checked against the bytes; a
// chunk that claims more than is left gets what is there, and the walk ends.
class AviChunkWalker {
public:
    // Returns false to stop the walk early.
    using TelemetryVisitor = std::function<bool(QByteArrayView data)>;

    // False when the bytes are not a RIFF "AVI " file.
    static bool walk(QByteArrayView bytes, const TelemetryVisitor& visit);
};
