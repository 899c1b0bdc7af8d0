#pragma once

#include "lmHostApi.h"
#include "OpenSG/OSGColor.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <type_traits>
#include <vector>

// Text of one call-log argument: integers in decimal, floating values in the
// shortest text that reads back to the same value, bools as true/false and
// strings double-quoted (with \ and " escaped).
LM_HOST_API std::string lmLogText(int value);
LM_HOST_API std::string lmLogText(unsigned int value);
LM_HOST_API std::string lmLogText(long value);
LM_HOST_API std::string lmLogText(unsigned long value);
LM_HOST_API std::string lmLogText(long long value);
LM_HOST_API std::string lmLogText(unsigned long long value);
LM_HOST_API std::string lmLogText(float value);
LM_HOST_API std::string lmLogText(double value);
LM_HOST_API std::string lmLogText(bool value);
LM_HOST_API std::string lmLogText(const char *value);
LM_HOST_API std::string lmLogText(const std::string &value);
LM_HOST_API std::string lmLogText(const QString &value);
LM_HOST_API std::string lmLogText(const osg::Color3f &value);

template <class E, class = typename std::enable_if<std::is_enum<E>::value>::type>
std::string lmLogText(E value)
{
    return lmLogText(static_cast<long long>(value));
}

template <class T>
std::string lmLogText(const std::vector<T> &values)
{
    std::string text = "[";
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i)
            text += ", ";
        text += lmLogText(values[i]);
    }
    return text + "]";
}

// The stand-in host's record of every state-changing host call, one line
// "Class::operation(args)" per call, with " [undo blocked]" appended while an
// undo blocker is active.
class LM_HOST_API lmCallLog
{
public:
    template <class... Args>
    static void record(const char *operation, const Args &...args)
    {
        if (!isRecording())
            return;
        std::string line(operation);
        line += '(';
        appendArguments(line, args...);
        line += ')';
        append(line);
    }

    static void append(const std::string &line);

    // The real host keeps no such log: benchmarks switch it off to measure
    // the plug-in alone. On by default and after a host reset.
    static void setRecording(bool on);
    static bool isRecording();

    static QStringList lines();
    static int size();
    static void clear();

    // Listeners see every line as it is recorded.
    using Listener = std::function<void(const QString &line)>;
    static int addListener(Listener listener);
    static void removeListener(int id);

private:
    static void appendArguments(std::string &) {}

    template <class First, class... Rest>
    static void appendArguments(std::string &line, const First &first, const Rest &...rest)
    {
        line += lmLogText(first);
        if (sizeof...(rest)) {
            line += ", ";
            appendArguments(line, rest...);
        }
    }
};
