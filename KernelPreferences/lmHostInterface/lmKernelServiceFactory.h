#pragma once

#include "lmHostApi.h"

#include <QObject>

#include <map>
#include <string>

// Base of the host's kernel services. Services are Qt objects, so that the
// factory can hand them out by class name and callers can cast them safely.
class LM_HOST_API lmKernelService : public QObject
{
    Q_OBJECT

public:
    explicit lmKernelService(QObject *parent = nullptr);
    ~lmKernelService() override;
};

// The host's registry of kernel services, keyed by the service's class name.
class LM_HOST_API lmKernelServiceFactory
{
public:
    static lmKernelServiceFactory &the();

    // The service registered for className. Null, after a message on stderr,
    // when the class is unknown or no service object exists for it.
    lmKernelService *getService(const char *className) const;

    // The service of type Service, looked up by its class name.
    template <class Service>
    Service *getService() const
    {
        return qobject_cast<Service *>(getService(Service::staticMetaObject.className()));
    }

    // Host side: makes className known with its service (null: known, but
    // without a service object) or unknown again.
    void registerService(const char *className, lmKernelService *service);
    void unregisterService(const char *className);

private:
    lmKernelServiceFactory();

    std::map<std::string, lmKernelService *> m_services;
};
