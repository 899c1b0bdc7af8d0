#pragma once

#include "lmHostApi.h"

// Writer settings of the host's scene-graph binary format.
class LM_HOST_API OpenSGFileIO
{
public:
    static OpenSGFileIO &the();

    // The host's compression numbering: 1 off, 2 fast, 4 best.
    void setCompressionType(int type);
    int getCompressionType() const { return m_compressionType; }

    // False writes the format older readers understand.
    void setNewFormat(bool on);
    bool getNewFormat() const { return m_newFormat; }

private:
    friend struct OpenSGFileIOReset;
    OpenSGFileIO() = default;

    int m_compressionType = 2;
    bool m_newFormat = true;
};
