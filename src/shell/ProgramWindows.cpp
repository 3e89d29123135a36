#include "shell/ProgramWindows.h"

#include "metadata/frmCddb.h"
#include "metadata/frmTrack.h"
#include "rip/frmExtract.h"
#include "settings/frmAbout.h"
#include "settings/frmOptions.h"
#include "settings/frmProducts.h"
#include "settings/frmVista.h"
#include "tags/frmID3E.h"

ProgramWindows::ProgramWindows(const Desktop &desktop, const Parts &parts)
    : m_parts(parts),
      m_frmExtract([this, &desktop] {
          return makeForm<frmExtract>(desktop,
                                      frmExtract::Parts{m_parts.ripHost, m_parts.discInfo, m_parts.settings,
                                                        *m_parts.components.AInfo},
                                      m_parts.components.makeVEnc());
      }),
      m_frmOptions([&desktop] { return makeForm<frmOptions>(desktop); }),
      m_frmCddb([this, &desktop] {
          return makeForm<frmCddb>(desktop,
                                   frmCddb::Parts{m_parts.trackListHost, m_parts.discInfo, m_parts.settings,
                                                  *m_parts.components.AInfo, *m_parts.components.CDRipperX1},
                                   m_parts.components.makeCddb());
      }),
      m_frmTrack([this, &desktop] {
          return makeForm<frmTrack>(
              desktop, frmTrack::Parts{m_parts.trackListHost, m_parts.discInfo, *m_parts.components.AInfo});
      }),
      m_frmID3E(
          [this, &desktop] { return makeForm<frmID3E>(desktop, m_parts.components.makeAudioInformation()); }),
      m_frmVista([&desktop] { return makeForm<frmVista>(desktop); }),
      m_frmAbout([this, &desktop] { return makeForm<frmAbout>(desktop, m_parts.windowsVersionName); }),
      m_frmProducts([&desktop] { return makeForm<frmProducts>(desktop); })
{}

ProgramWindows::~ProgramWindows() = default;

void ProgramWindows::showExtract(qint32 encType)
{
    m_frmExtract.form()->ShowExtract(*m_parts.components.CDRipperX1, encType, m_parts.owner);
}

void ProgramWindows::showOptions()
{
    const MainWindowParts &components = m_parts.components;
    m_frmOptions.form()->ShowForm(*components.MP3EncoderX1, *components.WMAEncoderX1,
                                  *components.VorbisEncoderX1, m_parts.owner);
}

void ProgramWindows::showCddb()
{
    m_frmCddb.form()->showModal(m_parts.owner);
}

void ProgramWindows::showTrackEditor()
{
    m_frmTrack.form()->showModal(m_parts.owner);
}

void ProgramWindows::showTagEditor()
{
    m_frmID3E.form()->showModal(m_parts.owner);
}

void ProgramWindows::showVistaNotice()
{
    m_frmVista.form()->showModal(m_parts.owner);
}

void ProgramWindows::showAbout()
{
    m_frmAbout.form()->showModal(m_parts.owner);
}

void ProgramWindows::showProducts()
{
    m_frmProducts.form()->showModal(m_parts.owner);
}
