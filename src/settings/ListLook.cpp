#include "settings/ListLook.h"

#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "controls/ReportListView.h"
#include "settings/SettingsKeys.h"

namespace {

/// Sets one property of the list's font from its stored text.
template <typename Change>
void changeFont(ReportListView &list, Change change)
{
    QFont font = list.font();
    change(font);
    list.setFont(font);
}

} // namespace

void LoadGridLines(const SettingsStore &store, ReportListView &list)
{
    const SkipFailures skip;
    skip([&] { list.setGridLines(toYesNo(store.read(Ini::GridLines))); });
}

void LoadListColorsAndFont(const SettingsStore &store, ReportListView &list)
{
    const SkipFailures skip;
    skip([&] { list.setBackColor(toInt32(store.read(Ini::BackColor))); });
    skip([&] { list.setForeColor(toInt32(store.read(Ini::ForeColor))); });
    skip([&] { changeFont(list, [&](QFont &font) { font.setBold(toYesNo(store.read(Ini::FontBold))); }); });
    skip([&] {
        changeFont(list, [&](QFont &font) { font.setItalic(toYesNo(store.read(Ini::FontItalic))); });
    });
    skip([&] {
        changeFont(list, [&](QFont &font) {
            const QString name = store.read(Ini::FontName);
            if (name.isEmpty())
                throw RunTimeFailure(RunTimeFailure::InvalidCall);
            font.setFamily(name);
        });
    });
    skip([&] {
        changeFont(list, [&](QFont &font) {
            const double size = toNumber(store.read(Ini::FontSize));
            if (size <= 0 || size > 2048)
                throw RunTimeFailure(RunTimeFailure::InvalidCall);
            font.setPointSizeF(size);
        });
    });
    skip([&] {
        changeFont(list,
                   [&](QFont &font) { font.setStrikeOut(toYesNo(store.read(Ini::FontStrikethrough))); });
    });
    skip([&] {
        changeFont(list, [&](QFont &font) { font.setUnderline(toYesNo(store.read(Ini::FontUnderline))); });
    });
}

void SaveListLook(const SettingsStore &store, const ReportListView &list)
{
    const QFont &font = list.font();
    store.write(Ini::GridLines, yesNoText(list.gridLines()));
    store.write(Ini::BackColor, QString::number(list.backColor()));
    store.write(Ini::ForeColor, QString::number(list.foreColor()));
    store.write(Ini::FontBold, yesNoText(font.bold()));
    store.write(Ini::FontItalic, yesNoText(font.italic()));
    store.write(Ini::FontName, font.family());
    store.write(Ini::FontSize, numberText(font.pointSizeF()));
    store.write(Ini::FontStrikethrough, yesNoText(font.strikeOut()));
    store.write(Ini::FontUnderline, yesNoText(font.underline()));
}
