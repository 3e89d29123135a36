#pragma once

#include "quality/Meter.h"

#include <string>

namespace quality {

/// Prints the qualities of several encoders side by side, a row for each sound, and the difference of the
/// first one's noise-to-mask ratio to the last one's; in the end the means.
class Table
{
public:
    explicit Table(const std::vector<std::string> &encoders);

    /// `group` tells which sounds share a mean.
    void addRow(const std::string &sound, const std::string &group, const std::vector<Quality> &qualities);
    void printMeans() const;

private:
    struct Sum
    {
        std::string group;
        std::vector<Quality> qualities;
        int count = 0;
    };

    std::vector<Sum> m_sums;
};

} // namespace quality
