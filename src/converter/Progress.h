#pragma once

#include <QString>

/// The arithmetic of the two progress bars. Shares are percentages, 0.0 to 100.0.
namespace Progress {

/// The nearest whole number, a half going to the even one: "13%".
QString text(double percent);

/// The share of the whole job that is done: `convertedFiles` of `totalFiles`, and `percent` of the current
/// one. Failure 11 for a job of no files.
double ofJob(int convertedFiles, int totalFiles, double percent);

/// How wide a bar is in a box of this width, in pixels.
int barWidth(int boxWidth, double percent);

} // namespace Progress
