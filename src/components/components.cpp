// The contracts hold nothing but declarations; this file makes a library of their meta-objects.
#include "components/CDDB.h"
#include "components/CDRipperX.h"
#include "components/MP3EncoderX.h"
#include "components/NCTAudioFile.h"
#include "components/NCTAudioInformation.h"
#include "components/VEnc.h"
#include "components/VorbisEncoderX.h"
#include "components/WMAEncoderX.h"
