#include "lmCallLog.h"

#include "lmHostSettings.h"
#include "lmScopedUndoBlocker.h"

#include <charconv>
#include <cmath>
#include <map>

namespace {

struct CallLogState
{
    QStringList lines;
    std::map<int, lmCallLog::Listener> listeners;
    int nextListener = 1;
    bool recording = true;
};

CallLogState &state()
{
    static CallLogState s;
    return s;
}

template <class F>
std::string shortestText(F value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

} // namespace

std::string lmLogText(int value) { return std::to_string(value); }
std::string lmLogText(unsigned int value) { return std::to_string(value); }
std::string lmLogText(long value) { return std::to_string(value); }
std::string lmLogText(unsigned long value) { return std::to_string(value); }
std::string lmLogText(long long value) { return std::to_string(value); }
std::string lmLogText(unsigned long long value) { return std::to_string(value); }
std::string lmLogText(float value) { return shortestText(value); }
std::string lmLogText(double value) { return shortestText(value); }
std::string lmLogText(bool value) { return value ? "true" : "false"; }

std::string lmLogText(const std::string &value)
{
    std::string text = "\"";
    for (char c : value) {
        if (c == '"' || c == '\\')
            text += '\\';
        text += c;
    }
    return text + "\"";
}

std::string lmLogText(const char *value)
{
    return value ? lmLogText(std::string(value)) : std::string("null");
}

std::string lmLogText(const QString &value)
{
    return lmLogText(value.toStdString());
}

std::string lmLogText(const osg::Color3f &value)
{
    return "Color3f(" + lmLogText(value.red()) + ", " + lmLogText(value.green()) + ", " + lmLogText(value.blue()) + ")";
}

void lmCallLog::setRecording(bool on)
{
    state().recording = on;
}

bool lmCallLog::isRecording()
{
    return state().recording;
}

void lmCallLog::append(const std::string &line)
{
    if (!isRecording())
        return;
    QString text = QString::fromStdString(line);
    if (lmScopedUndoBlocker::isBlocked())
        text += QStringLiteral(" [undo blocked]");
    CallLogState &s = state();
    s.lines.append(text);
    // Listeners may add or remove listeners while being told.
    const auto listeners = s.listeners;
    for (const auto &entry : listeners)
        entry.second(text);
}

QStringList lmCallLog::lines()
{
    return state().lines;
}

int lmCallLog::size()
{
    return state().lines.size();
}

void lmCallLog::clear()
{
    state().lines.clear();
}

int lmCallLog::addListener(Listener listener)
{
    CallLogState &s = state();
    const int id = s.nextListener++;
    s.listeners.emplace(id, std::move(listener));
    return id;
}

void lmCallLog::removeListener(int id)
{
    state().listeners.erase(id);
}
