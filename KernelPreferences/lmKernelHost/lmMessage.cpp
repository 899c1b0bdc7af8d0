#include "lmMessage.h"

#include "lmPreferencesHost.h"

#include <boost/stacktrace.hpp>

#include <iostream>

lmMessage::lmMessage() = default;
lmMessage::~lmMessage() = default;

void lmMessage::set(const std::string &key, const boost::any &value, bool overwrite)
{
    auto it = m_values.find(key);
    if (it == m_values.end())
        m_values.emplace(key, value);
    else if (overwrite)
        it->second = value;
}

const boost::any &lmMessage::get(const std::string &key) const
{
    static const boost::any empty;
    auto it = m_values.find(key);
    if (it != m_values.end())
        return it->second;
    lmPreferencesHost::noteReadWithoutValue(*this, key);
    return empty;
}

void lmMessage::remove(const std::string &key)
{
    m_values.erase(key);
}

bool lmMessage::contains(const std::string &key) const
{
    return m_values.count(key) != 0;
}

std::vector<std::string> lmMessage::keys() const
{
    std::vector<std::string> result;
    result.reserve(m_values.size());
    for (const auto &entry : m_values)
        result.push_back(entry.first);
    return result;
}

std::size_t lmMessage::size() const
{
    return m_values.size();
}

void lmMessage::clear()
{
    m_values.clear();
}

void lmMessage::printBT()
{
    std::cerr << boost::stacktrace::stacktrace() << std::flush;
}
