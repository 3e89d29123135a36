#pragma once

#include <QString>

/// Whether an address has the form of an e-mail address and ends in a top-level domain of the table. It is
/// not trimmed here, and the network isn't asked.
bool IsValidEmail(const QString &address);

/// Fills the table of top-level domains, which otherwise happens when the first address needs it.
void BuildDomainTable();
