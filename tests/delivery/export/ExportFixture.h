#pragma once

#include "delivery/DeliveryFixture.h"
#include "delivery/DeliveryRows.h"
#include "delivery/export/ExportPlanning.h"

namespace corvane::test {

/// Clips that are exported into "out".
class ExportTest : public DeliveryTest {
  protected:
    ExportTest() {
        choices.outputFolder = folder.at("out");
        applyPreset(choices.naming, NamingPreset::keepOriginal, {});
    }
    static Subclip &addSubclip(VideoRecord &video, int index, double in, double out) {
        Subclip subclip = sampleSubclip(text("s%1").arg(index), video.id, index);
        subclip.inSeconds = in;
        subclip.outSeconds = out;
        subclip.selectedForExport = true;
        video.subclips.append(subclip);
        return video.subclips.last();
    }
    static std::vector<std::string> rowNames(const DeliveryRows &rows) {
        std::vector<std::string> names;
        for (const DeliveryRow &row : rows.rows()) {
            names.push_back(row.name.toStdString());
        }
        return names;
    }

    ExportChoices choices;
};

} // namespace corvane::test
