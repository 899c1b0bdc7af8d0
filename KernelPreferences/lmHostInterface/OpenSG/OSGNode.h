#pragma once

#include "lmHostApi.h"

#include <string>

namespace osg {

// A scene-graph node as the preferences see one: named, handed to host
// operations by pointer.
class LM_HOST_API Node
{
public:
    explicit Node(const std::string &name = std::string()) : m_name(name) {}

    const std::string &getName() const { return m_name; }

private:
    std::string m_name;
};

typedef Node *NodePtr;

} // namespace osg
