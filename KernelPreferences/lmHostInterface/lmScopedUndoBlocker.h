#pragma once

#include "lmHostApi.h"

// Blocks the host's undo recording for its lifetime (when constructed with true).
class LM_HOST_API lmScopedUndoBlocker
{
public:
    explicit lmScopedUndoBlocker(bool block);
    ~lmScopedUndoBlocker();

    lmScopedUndoBlocker(const lmScopedUndoBlocker &) = delete;
    lmScopedUndoBlocker &operator=(const lmScopedUndoBlocker &) = delete;

    static bool isBlocked();

private:
    bool m_block;
};
