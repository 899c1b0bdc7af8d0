#include "lmHostProcess.h"

#include "lmCallLog.h"
#include "lmHostState.h"
#include "lmWebInterface.h"

#include <memory>

namespace {

struct Process
{
    bool vServerNode = false;
    bool viewer = false;
    int webInterfacePort = 0;
    QString webInterfacePipe;
    bool startFails = false;
    std::unique_ptr<lmWebInterface> webInterface;
};

Process &process()
{
    return lmHostState<Process>();
}

} // namespace

bool lmHostProcess::isVServerNode() { return process().vServerNode; }
void lmHostProcess::setVServerNode(bool on) { process().vServerNode = on; }
bool lmHostProcess::isViewer() { return process().viewer; }
void lmHostProcess::setViewer(bool on) { process().viewer = on; }
int lmHostProcess::webInterfacePort() { return process().webInterfacePort; }
void lmHostProcess::setWebInterfacePort(int port) { process().webInterfacePort = port; }
QString lmHostProcess::webInterfacePipe() { return process().webInterfacePipe; }
void lmHostProcess::setWebInterfacePipe(const QString &pipe) { process().webInterfacePipe = pipe; }
void lmHostProcess::setWebInterfaceStartFails(bool fails) { process().startFails = fails; }

void lmHostProcess::startWebInterface()
{
    Process &p = process();
    if (!p.startFails && !p.webInterface)
        p.webInterface = std::make_unique<lmWebInterface>();
}

void lmHostProcess::stopWebInterface()
{
    process().webInterface.reset();
}

lmWebInterface *lmHostProcess::webInterface()
{
    return process().webInterface.get();
}

// lmWebInterface

lmWebInterface::lmWebInterface() = default;
lmWebInterface::~lmWebInterface() = default;

void lmWebInterface::setDebugMode(bool on)
{
    lmCallLog::record("lmWebInterface::setDebugMode", on);
    m_debugMode = on;
}

bool lmWebInterface::getDebugMode() const
{
    return m_debugMode;
}
