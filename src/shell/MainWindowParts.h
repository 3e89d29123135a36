#pragma once

#include "components/CDDB.h"
#include "components/CDRipperX.h"
#include "components/MP3EncoderX.h"
#include "components/NCTAudioInformation.h"
#include "components/VEnc.h"
#include "components/VorbisEncoderX.h"
#include "components/WMAEncoderX.h"

#include <functional>
#include <memory>

/// The components on the main window, and what it needs for the windows that it opens.
struct MainWindowParts
{
    std::unique_ptr<CDRipperX> CDRipperX1;
    std::unique_ptr<MP3EncoderX> MP3EncoderX1;
    std::unique_ptr<WMAEncoderX> WMAEncoderX1;
    std::unique_ptr<VorbisEncoderX> VorbisEncoderX1;
    std::unique_ptr<NCTAudioInformation> AInfo;

    /// The tag component of the ID3 Editor.
    std::function<std::unique_ptr<NCTAudioInformation>()> makeAudioInformation;
    std::function<std::unique_ptr<CDDB>()> makeCddb;
    /// Gives nothing in a build without a VQF encoder.
    std::function<std::unique_ptr<VEnc>()> makeVEnc;
    /// Shows the Audio Converter, which stands beside the main window and may outlive it.
    std::function<void()> showAudioConverter;
};
