#pragma once

#include <QString>
#include <QUrl>

// The web page the map controller drives: it loads an address and evaluates
// script texts. Results and errors never come back; a page that is still
// loading must keep the scripts and run them, in order, once it has loaded.
class MapPage {
public:
    virtual ~MapPage() = default;
    virtual void load(const QUrl& url) = 0;
    virtual void runJavaScript(const QString& script) = 0;
};
