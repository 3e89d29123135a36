#pragma once

/// The columns of the list of files.
namespace TagColumns {

enum Column { Track, Title, File, Path };

}
