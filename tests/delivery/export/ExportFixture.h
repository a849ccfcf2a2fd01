#pragma once

#include "delivery/DeliveryFixture.h"
#include "delivery/export/ExportPlanning.h"

namespace corvane::test {

/// Clips that are exported into "out".
class ExportTest : public DeliveryTest {
  protected:
    ExportTest() {
        choices.outputFolder = folder.at(text("out"));
        applyPreset(choices.naming, NamingPreset::keepOriginal, {});
    }

    ExportChoices choices;
};

} // namespace corvane::test
