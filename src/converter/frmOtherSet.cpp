#include "converter/frmOtherSet.h"

#include "base/Text.h"
#include "platform/ProgramPaths.h"
#include "settings/Folders.h"

frmOtherSet::frmOtherSet(Form &form) : FormPart(form)
{
    setupUi(this);
    txtFolder->setText(desktop().paths.ProgramFolder + PathSeparator + QStringLiteral("output"));
    attach(cmdFolder, &QPushButton::clicked, [this] { cmdFolder_Click(); });
}

void frmOtherSet::cmdFolder_Click()
{
    const QString folder = trimBlanks(BrowseForFolder(desktop().dialogs, window()));
    if (!folder.isEmpty())
        txtFolder->setText(folder);
}
