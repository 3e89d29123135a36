#include "Program.h"

#include "converter/frmMain1.h"
#include "engines/audiofile/AudioFile.h"
#include "engines/cdrom/CdEngine.h"
#include "engines/codecs/Mp3Component.h"
#include "engines/codecs/VorbisComponent.h"
#include "engines/codecs/WmaComponent.h"
#include "engines/freedb/FreeDbClient.h"
#include "engines/tagfile/AudioInformation.h"
#include "engines/vqf/VqfComponent.h"
#include "engines/vqf/VqfEncoder.h"
#include "platform/ProgramPaths.h"
#include "shell/frmMain.h"

namespace {

MainWindowParts realParts(const Desktop &desktop, std::function<void()> showAudioConverter)
{
    MainWindowParts parts;
    parts.CDRipperX1 = std::make_unique<CdEngine>(desktop.paths.DiscsFolder);
    parts.MP3EncoderX1 = std::make_unique<codecs::Mp3Component>();
    parts.WMAEncoderX1 = std::make_unique<codecs::WmaComponent>();
    parts.VorbisEncoderX1 = std::make_unique<codecs::VorbisComponent>();
    parts.AInfo = std::make_unique<engines::AudioInformation>();
    parts.makeAudioInformation = [] { return std::make_unique<engines::AudioInformation>(); };
    parts.makeCddb = [] { return std::make_unique<engines::FreeDbClient>(); };
    parts.makeVEnc = [] { return vqf::isAvailable() ? std::make_unique<vqf::VqfComponent>() : nullptr; };
    parts.showAudioConverter = std::move(showAudioConverter);
    return parts;
}

} // namespace

Program::Program(const Desktop &desktop)
    : m_frmMain1([&desktop] {
          return makeForm<frmMain1>(desktop, std::make_unique<audiofile::AudioFile>(),
                                    std::make_unique<audiofile::AudioFile>());
      }),
      m_frmMain([this, &desktop] {
          return makeForm<frmMain>(desktop,
                                   realParts(desktop, [this] { m_frmMain1.form()->showModeless(); }));
      })
{}

Program::~Program() = default;

void Program::start()
{
    const std::shared_ptr<frmMain> window = m_frmMain.form();
    m_mainWindow = window;
    window->showModeless();
}
