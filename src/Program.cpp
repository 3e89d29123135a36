#include "Program.h"

#include "engines/cdrom/CdEngine.h"
#include "engines/codecs/Mp3Component.h"
#include "engines/codecs/VorbisComponent.h"
#include "engines/codecs/WmaComponent.h"
#include "engines/tagfile/AudioInformation.h"
#include "shell/frmMain.h"

namespace {

MainWindowParts realParts(const Desktop &desktop)
{
    MainWindowParts parts;
    parts.CDRipperX1 = std::make_unique<cdrom::CdEngine>(desktop.paths.DiscsFolder);
    return parts;
}

} // namespace

Program::Program(const Desktop &desktop)
    : m_slot([&desktop] { return makeForm<frmMain>(desktop, realParts(desktop)); })
{
}

Program::~Program() = default;

void Program::start()
{
    const std::shared_ptr<frmMain> window = m_slot.form();
    m_window = window;
    window->showModeless();
}
