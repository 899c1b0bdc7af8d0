#include "lmScopedUndoBlocker.h"

namespace {
int blockDepth = 0;
}

lmScopedUndoBlocker::lmScopedUndoBlocker(bool block) : m_block(block)
{
    if (m_block)
        ++blockDepth;
}

lmScopedUndoBlocker::~lmScopedUndoBlocker()
{
    if (m_block)
        --blockDepth;
}

bool lmScopedUndoBlocker::isBlocked()
{
    return blockDepth > 0;
}
