#include "tests/e2e/app_with_rows.h"

#include "tests/e2e/planted_values.h"

namespace {

struct CanceledApp : FreshApp {
    CanceledApp() {
        PlantedValues();
        RunCanceledAnalysis(*this, CPlantedValues::RowsPerHive());
    }
};

}  // namespace

CAppDriver& AppWithRows() {
    static CanceledApp app;
    const CRemoteList& list = app.List();
    for (const int row : list.CheckedRows()) list.Check(row, false);
    list.Select({});
    list.Focus(-1);
    list.SetSelectionMark(-1);
    return app;
}
