// Waiting for the service, and what may change meanwhile.
#include "base/DiscInfo.h"
#include "base/Task.h"
#include "components/CDRipperX.h"
#include "controls/InputGate.h"
#include "controls/WaitCursor.h"
#include "metadata/frmCddb.h"

#include <QScopedValueRollback>

std::optional<qint16> frmCddb::runExchange(const Exchange &exchange)
{
    const WaitCursor waiting(*this);
    InputGate gate(*this, *OKButton);
    const QScopedValueRollback answering(m_gate, &gate);
    const qint16 status = doBeside(
        "lookup", exchange, {.isCancelled = [&gate] { return gate.isCancelled(); }, .takesInput = true});
    return gate.isCancelled() ? std::nullopt : std::optional(status);
}

bool frmCddb::followDisc()
{
    if (isSameDisc())
        return false;
    m_discId = m_parts.CDRipperX1.DiscId();
    txtID->setText(m_discId);
    showDisc(DiscInfo()); // the record still holds the texts of the disc before
    return true;
}
