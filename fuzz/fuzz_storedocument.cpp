// libFuzzer target: the store file reader. Whatever the bytes, reading never
// crashes; a document it accepts is written again and read back to the very
// same values and types.
#include "lmStoreFile.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    lmMessage store;
    QString error;
    if (!lmStoreDocument::read(QByteArray(reinterpret_cast<const char *>(data), int(size)), store, &error))
        return 0;

    lmMessage again;
    if (!lmStoreDocument::read(lmStoreDocument::write(store), again, &error))
        std::abort();
    if (again.size() != store.size())
        std::abort();
    for (const auto &entry : store.values())
        if (!lmStoreDocument::sameValue(entry.second, again.get(entry.first)))
            std::abort();
    return 0;
}
