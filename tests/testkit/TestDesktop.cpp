#include "testkit/TestDesktop.h"

#include "testkit/Ui.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

TestDesktop::TestDesktop() : m_desktop{dialogs, shell, pump, clock, version, paths, end, border, registry}
{
    paths.ProgramFolder = paths.SettingsFolder = paths.ExecutableFolder =
        QDir::toNativeSeparators(m_folder.path());
    paths.ProgramBaseName = QStringLiteral("tonelift");
    paths.DiscsFolder = paths.ProgramFolder + PathSeparator + QStringLiteral("discs");
}

TestDesktop::~TestDesktop()
{
    deleteUnloaded();
}

QString TestDesktop::write(const QString &name, const QByteArray &content) const
{
    const QString path = folder() + PathSeparator + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        ADD_FAILURE() << "Can't write " << path.toStdString();
    return path;
}
