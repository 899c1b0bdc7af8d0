#include "lmKernelServiceFactory.h"

#include <cstdio>

lmKernelService::lmKernelService(QObject *parent) : QObject(parent) {}

lmKernelService::~lmKernelService() = default;

lmKernelServiceFactory::lmKernelServiceFactory() = default;

lmKernelServiceFactory &lmKernelServiceFactory::the()
{
    // Never destroyed: plug-ins look services up from their static destructors.
    static lmKernelServiceFactory *factory = new lmKernelServiceFactory;
    return *factory;
}

lmKernelService *lmKernelServiceFactory::getService(const char *className) const
{
    const auto it = m_services.find(className);
    if (it == m_services.end()) {
        std::fprintf(stderr, "lmKernelServiceFactory: couldn't find class '%s'!\n", className);
        return nullptr;
    }
    if (!it->second) {
        std::fprintf(stderr, "lmKernelServiceFactory: service '%s' is NULL!\n", className);
        return nullptr;
    }
    return it->second;
}

void lmKernelServiceFactory::registerService(const char *className, lmKernelService *service)
{
    m_services[className] = service;
}

void lmKernelServiceFactory::unregisterService(const char *className)
{
    m_services.erase(className);
}
