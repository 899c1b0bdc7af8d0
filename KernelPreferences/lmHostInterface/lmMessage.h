#pragma once

#include "lmHostApi.h"

#include <boost/any.hpp>

#include <map>
#include <string>
#include <vector>

// The host's preference store: an ordered map from key to typed value.
class LM_HOST_API lmMessage
{
public:
    lmMessage();
    ~lmMessage();

    // Inserts the value; an existing key is replaced only when overwrite is true.
    void set(const std::string &key, const boost::any &value, bool overwrite = true);
    // The value under key, or an empty value when the key is absent.
    const boost::any &get(const std::string &key) const;
    void remove(const std::string &key);

    bool contains(const std::string &key) const;
    std::vector<std::string> keys() const;
    std::size_t size() const;
    void clear();

    const std::map<std::string, boost::any> &values() const { return m_values; }

    // Prints the current call stack to stderr.
    static void printBT();

private:
    std::map<std::string, boost::any> m_values;
};
