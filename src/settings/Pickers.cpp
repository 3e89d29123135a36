#include "settings/Pickers.h"

#include "base/Numbers.h"
#include "controls/ReportListView.h"
#include "platform/Dialogs.h"

namespace {

/// A font has one point at least.
qint32 wholeSize(double points)
{
    return qMax(1, toInt32(points));
}

} // namespace

qint32 ChooseColorDialog(Dialogs &dialogs, QWidget *owner, qint32 color)
{
    return dialogs.chooseColor(owner, color);
}

bool ChooseFontDialog(Dialogs &dialogs, QWidget *owner, ReportListView &target)
{
    FontChoice offered{target.font(), target.foreColor()};
    offered.font.setPointSize(wholeSize(offered.font.pointSizeF()));
    const std::optional<FontChoice> chosen = dialogs.chooseFont(owner, offered);
    if (!chosen)
        return false;
    QFont font = target.font();
    font.setItalic(chosen->font.italic());
    font.setStrikeOut(chosen->font.strikeOut());
    font.setUnderline(chosen->font.underline());
    font.setWeight(chosen->font.weight());
    font.setFamily(chosen->font.family());
    // The dialog counts in tenths of a point.
    font.setPointSize(wholeSize(toInt32(chosen->font.pointSizeF() * 10) / 10.0));
    target.setFont(font);
    target.setForeColor(chosen->color);
    return true;
}
