#pragma once

#include "lmHostApi.h"

#include <QString>

class lmWebInterface;

// How the stand-in process was started (process kind, web-interface command
// line) and the web server it runs. Tests set these; resetHost() restores a
// plain desktop process without a server.
class LM_HOST_API lmHostProcess
{
public:
    // A render-cluster server node.
    static bool isVServerNode();
    static void setVServerNode(bool on);
    // A viewer-only process.
    static bool isViewer();
    static void setViewer(bool on);
    // Port given on the command line; 0 when none.
    static int webInterfacePort();
    static void setWebInterfacePort(int port);
    // Pipe name given on the command line; empty when none.
    static QString webInterfacePipe();
    static void setWebInterfacePipe(const QString &pipe);

    // The server runs from enableWebInterface(true) to enableWebInterface(false),
    // unless starting is made to fail (a port in use, say).
    static void setWebInterfaceStartFails(bool fails);
    static void startWebInterface();
    static void stopWebInterface();
    // The running server, or null.
    static lmWebInterface *webInterface();
};
