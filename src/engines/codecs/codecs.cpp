#include "engines/codecs/Encoder.h"
