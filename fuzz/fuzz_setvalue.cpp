// libFuzzer target: the "--set KEY=VALUE" value parser. The first byte picks
// the type of the key being set, the rest is the typed text. Parsing never
// crashes, and a value it accepts reads back from its own text unchanged.
#include "lmStoreFile.h"
#include "lmValueParser.h"

#include "OpenSG/OSGColor.h"

#include <QString>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

boost::any like(std::uint8_t selector)
{
    switch (selector % 11) {
    case 0:
        return int(0);
    case 1:
        return 0u;
    case 2:
        return 0.0f;
    case 3:
        return 0.0;
    case 4:
        return false;
    case 5:
        return std::string();
    case 6:
        return QString();
    case 7:
        return osg::Color3f();
    case 8:
        return std::vector<float>();
    case 9:
        return std::vector<osg::Color3f>();
    default:
        return std::vector<std::string>();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const boost::any kind = like(data[0]);
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1), int(size - 1));

    boost::any value;
    QString error;
    if (!lmValueParser::parse(text, kind, value, &error))
        return 0;
    if (lmStoreDocument::typeName(value) != lmStoreDocument::typeName(kind))
        std::abort();

    boost::any again;
    if (!lmValueParser::parse(lmValueParser::text(value), kind, again, &error))
        std::abort();
    if (!lmStoreDocument::sameValue(value, again))
        std::abort();
    return 0;
}
