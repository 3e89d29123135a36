#include "converter/Progress.h"

#include "base/Numbers.h"

QString Progress::text(double percent)
{
    return QString::number(toInt32(percent)) + u'%';
}

double Progress::ofJob(int convertedFiles, int totalFiles, double percent)
{
    return divide(convertedFiles + percent / 100, totalFiles) * 100;
}

int Progress::barWidth(int boxWidth, double percent)
{
    return toInt32(boxWidth * percent / 100);
}
