#pragma once

#include <QStringList>

/// The 51 numbered WMA profiles. Their names come from the component; what they are meant for stands here.
namespace WmaProfiles {

/// Indexed by profile number minus 1, which is the row of the profiles' list.
extern const QStringList WMAProfileDescriptions;

/// The row chosen at first.
inline constexpr int PresetRow = 38;

} // namespace WmaProfiles
