#pragma once

#include <QSize>
#include <QString>

#include <cstdint>

// What to generate; the defaults make the README's demo card.
struct DemoOptions {
    QString outDir;
    int clipSeconds = 20; // length of every clip
    int continuousClips = 4; // consecutive front/rear pairs in cont_rec
    QSize frontSize { 1280, 720 };
    QSize rearSize { 640, 360 };
    int fps = 15;
    std::uint64_t seed = 1;
    int jobs = 2; // ffmpeg runs at a time
    bool extraCards = true; // the Kel-family and web-settings cards beside the main one
    bool force = false; // regenerate even when the card is up to date
    bool verbose = false;

    // A one-line summary; a card made with the same summary is up to date.
    QString stamp() const;
};
