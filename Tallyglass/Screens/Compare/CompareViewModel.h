// The compare screen's state over the application's comparison model: what it shows, block by block, and what
// its controls do. Each block has a signal of its own.
//
// Main thread only.

#pragma once

#include "Tallyglass/Controls/Lists/ChangeListModel.h"
#include "Tallyglass/Models/DiffModel.h"
#include "Tallyglass/Screens/Compare/BackupChoiceModel.h"
#include "Tallyglass/Screens/Compare/CompareContent.h"
#include "Tallyglass/Screens/Context/ViewModel.h"

#include <QProperty>
#include <optional>

namespace tallyglass {

class CompareViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool isLocked READ isLocked NOTIFY isLockedChanged)
    Q_PROPERTY(tallyglass::ComparePickerContent picker READ picker NOTIFY pickerChanged)
    Q_PROPERTY(QString elapsed READ elapsed NOTIFY elapsedChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(bool hasSummary READ hasSummary NOTIFY hasSummaryChanged)
    Q_PROPERTY(tallyglass::CompareSummaryContent summary READ summary NOTIFY summaryChanged)
    Q_PROPERTY(bool hasResults READ hasResults NOTIFY hasResultsChanged)
    Q_PROPERTY(tallyglass::CompareResultsContent results READ results NOTIFY resultsChanged)
    Q_PROPERTY(QString olderRoot READ olderRoot NOTIFY rootsChanged)
    Q_PROPERTY(QString newerRoot READ newerRoot NOTIFY rootsChanged)
    Q_PROPERTY(tallyglass::BackupChoiceModel* backups READ backups CONSTANT)
    Q_PROPERTY(tallyglass::ChangeListModel* rows READ rows CONSTANT)

public:
    using ViewModel::ViewModel;

    /// Null until the application's models are there.
    [[nodiscard]] DiffModel* diff() const { return m_diff; }

    [[nodiscard]] bool isLocked() const { return m_isLocked; } ///< Full Disk Access isn't known to be granted
    [[nodiscard]] ComparePickerContent picker() const { return m_picker; }
    [[nodiscard]] QString elapsed() const { return m_elapsed; } ///< since the comparison that runs began
    [[nodiscard]] QString error() const { return m_error; }     ///< empty when there is none
    [[nodiscard]] bool hasSummary() const { return m_hasSummary; }
    [[nodiscard]] CompareSummaryContent summary() const { return m_summary; }
    [[nodiscard]] bool hasResults() const { return m_hasResults; }
    [[nodiscard]] CompareResultsContent results() const { return m_results; }
    [[nodiscard]] QString olderRoot() const {
        return m_olderRoot;
    } ///< of the backups that the rows come from
    [[nodiscard]] QString newerRoot() const { return m_newerRoot; }
    [[nodiscard]] BackupChoiceModel* backups() { return &m_backups; }
    [[nodiscard]] ChangeListModel* rows() { return &m_rows; }

    /// The user has come to the screen: backups may have come and gone.
    Q_INVOKABLE void appear();

    /// Picks two backups by their roots and compares them when the backups are listed.
    Q_INVOKABLE void compareBackups(const QString& olderRoot, const QString& newerRoot);

    // The controls. None does anything before the application's model is there.
    Q_INVOKABLE void pickFrom(int backup);
    Q_INVOKABLE void pickTo(int backup);
    Q_INVOKABLE void setCompareExtendedAttributes(bool compares);
    Q_INVOKABLE void setDepth(int depth); ///< kept from 1 to 12
    Q_INVOKABLE void setUnlimitedDepth(bool isUnlimited);
    Q_INVOKABLE void compare();
    Q_INVOKABLE void rerun();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void setSearchText(const QString& text);
    Q_INVOKABLE void setContentOnly(bool contentOnly);
    Q_INVOKABLE void toggleKind(int position); ///< among the kinds of the results

signals:
    void isLockedChanged();
    void pickerChanged();
    void elapsedChanged();
    void errorChanged();
    void hasSummaryChanged();
    void summaryChanged();
    void hasResultsChanged();
    void resultsChanged();
    void rootsChanged();

protected:
    void update() override;

private:
    using Self = CompareViewModel;

    void followModel();
    void updatePicker();
    void updateElapsed();
    void updateResults();

    DiffModel* m_diff = nullptr;
    BackupChoiceModel m_backups;
    ChangeListModel m_rows;
    std::optional<Comparison> m_counted; ///< the result whose rows `m_metadataOnly` counts
    std::int64_t m_metadataOnly = 0;

    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(Self, bool, m_isLocked, true, &CompareViewModel::isLockedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, ComparePickerContent, m_picker, &CompareViewModel::pickerChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QString, m_elapsed, &CompareViewModel::elapsedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QString, m_error, &CompareViewModel::errorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, bool, m_hasSummary, &CompareViewModel::hasSummaryChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, CompareSummaryContent, m_summary, &CompareViewModel::summaryChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, bool, m_hasResults, &CompareViewModel::hasResultsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, CompareResultsContent, m_results, &CompareViewModel::resultsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QString, m_olderRoot, &CompareViewModel::rootsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(Self, QString, m_newerRoot, &CompareViewModel::rootsChanged)
};

} // namespace tallyglass
