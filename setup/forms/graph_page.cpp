#include "setup/forms/graph_page.h"

namespace kvo::forms {

GraphPage::GraphPage() {
    setObjectName(QStringLiteral("Graph"));
}

void GraphPage::showValues(const setup::SetupValues& values) {
    showRows(values);
}

void GraphPage::showRows(const setup::SetupValues&) {}

void GraphPage::collect(setup::SetupValues&) const {}

} // namespace kvo::forms
