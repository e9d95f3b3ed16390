#pragma once
// Fuzz targets of the plug-in run its code, which writes a debug line for
// nearly everything; printed, those lines would slow a run to a crawl.

#include <QtGlobal>

#include <cstdio>

inline void silenceDebugLog()
{
    static const bool once = [] {
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
            if (type != QtDebugMsg && type != QtInfoMsg)
                std::fprintf(stderr, "%s\n", qUtf8Printable(message));
        });
        return true;
    }();
    (void)once;
}
