#include "exCursorProgress.h"

#include "lmCallLog.h"
#include "lmRenderHostState.h"

void exCursorProgress::setPreferredSize(int pixels)
{
    lmCallLog::record("exCursorProgress::setPreferredSize", pixels);
    lmRenderHostState::state().cursorPreferredSize = pixels;
}

int exCursorProgress::getPreferredSize()
{
    return lmRenderHostState::state().cursorPreferredSize;
}

void exCursorProgress::setPreferredPosition(Position position)
{
    lmCallLog::record("exCursorProgress::setPreferredPosition", position);
    lmRenderHostState::state().cursorPosition = position;
}

exCursorProgress::Position exCursorProgress::getPreferredPosition()
{
    return lmRenderHostState::state().cursorPosition;
}

void exCursorProgress::setPreferredVisibility(bool visible)
{
    lmCallLog::record("exCursorProgress::setPreferredVisibility", visible);
    lmRenderHostState::state().cursorVisible = visible;
}

bool exCursorProgress::getPreferredVisibility()
{
    return lmRenderHostState::state().cursorVisible;
}

int exCursorProgress::getBaseSize()
{
    return lmRenderHostState::state().cursorBaseSize;
}
