#pragma once

#include <optional>
#include <string>
#include <vector>

#include "framework/dialog.h"
#include "framework/list_ctrl.h"

/// Everything in which one list of dated files differs from another. What is asked about one entry or several
/// stands between an opening and an ending.
struct DatedListTexts {
    const char* columnName;
    const char* tooMany;
    int mostWithoutWarning;

    const char* chooseOne;
    const char* chooseOnlyOne;
    const char* askChosen;     // + date + "?"
    const char* chooseDelete;  // nothing is checked
    const char* askDelete;     // + name + " ?"
    const char* deleted;       // + name + " deleted successfully."
    const char* askDeleteAll;  // "Delete the selected " + count + this
    const char* deletedAll;    // "The selected " + count + this
};

/// A modal list of files or folders that are named by the time at which they were made. The user checks one
/// and presses the first button, or deletes those that are checked.
class CDlgDatedList : public CDialog {
public:
    /// The entry that the dialog was closed with, and its date as it was shown.
    [[nodiscard]] const std::string& ChosenName() const { return m_chosenName; }
    [[nodiscard]] const std::string& ChosenDate() const { return m_chosenDate; }

protected:
    CDlgDatedList(UINT templateId, const DatedListTexts& texts) : CDialog(templateId), m_texts(texts) {}

    /// The entries in the order in which they are to be shown.
    [[nodiscard]] virtual std::vector<std::string> FindEntries() const = 0;
    /// An entry's date as it is shown; with nothing the entry gets none and the filling ends there.
    [[nodiscard]] virtual std::optional<std::string> ShownDate(const std::string& name) const = 0;
    /// @return whether the entry is gone.
    [[nodiscard]] virtual bool DeleteEntry(const std::string& name) const = 0;

    [[nodiscard]] bool OnInitDialog() override;
    void OnOK() override;
    [[nodiscard]] std::span<const CommandRow> Commands() const override;

private:
    void OnDelete();
    void DeleteOne(int row);
    void DeleteSeveral(const std::vector<int>& rows);
    void Fill();
    void EnableButtons();
    [[nodiscard]] CDialogList List() const;
    [[nodiscard]] std::vector<int> CheckedRows() const;

    const DatedListTexts& m_texts;
    std::string m_chosenName;
    std::string m_chosenDate;
};
