#pragma once

#include <QString>

// How well a text matches what a person typed into the preferences search:
// case, blanks and punctuation do not count ("spacemouse" finds "Space
// Mouse", "fov" finds "Camera fov"), and a needle of five letters or more
// may have one letter more, less or different ("Tessellation" finds
// "Tesselation").
namespace lmSettingSearch {

// Lower-case letters and digits only.
QString normalized(const QString &text);

// 0 when text does not match; higher for a better match: the whole text,
// then its start, then anywhere in it, then within one letter.
int score(const QString &normalizedNeedle, const QString &text);

} // namespace lmSettingSearch
