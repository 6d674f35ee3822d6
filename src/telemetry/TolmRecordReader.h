#pragma once

#include "telemetry/GpsFix.h"
#include "telemetry/SampleWriter.h"
#include "telemetry/SecondBuffer.h"
#include "telemetry/TelemetryText.h"

class TavroClipData;

// The comma-separated records of the Tolm camera family, as found in an MP4's
// subtitle track and after "02tx"/"03tx" tags in other clips:
//   gsensor,x,y,z              one G sample in 1/128 g (z cut by cut3)
//   gsensori,s1,s2,cx,cy,cz    one G sample in device counts, scale s2/s1
//   CAR,x,y,z                  (subtitles) repeats the second's last sample
//   dummy                      (subtitles) nothing
//   GPRMC,... / GNRMC,...      RMC sentence: ends the second
// G samples are collected per second and spread to ten samples when the
// second's RMC sentence arrives. A clip without any RMC sentence is one long
// "second", so the buffer holds up to the record's capacity.
class TolmRecordReader {
public:
    enum class Source { Subtitle, RawBytes };

    TolmRecordReader(TavroClipData& record, Source source);

    void handle(const TelemetryText::FieldList& fields);
    bool isFull() const { return m_writer.isFull(); }
    // Closes the last second, converts the coordinates and returns the count.
    int finish();

    // The camera's field cuts (see the .cpp). Public for their own checks.
    static QByteArray cut3(QByteArrayView field);
    static QByteArray leadcut(QByteArrayView field);
    static RawGSample scaledSample(const TelemetryText::FieldList& fields);

    // The fields of one subtitle payload (line breaks already turned into
    // blanks): "a,b;c,d" reads as a, b, c, d; a second ";" and what follows
    // it are dropped. The fields are views into `joined`.
    static TelemetryText::FieldList subtitleFields(QByteArrayView joined);

private:
    static RawGSample plainSample(const TelemetryText::FieldList& fields);
    void endSecond(const GpsFix& fix);

    TavroClipData& m_record;
    Source m_source;
    SampleWriter m_writer;
    SecondBuffer m_second;
    GpsFix m_current;
    bool m_sawRmc = false;
};
