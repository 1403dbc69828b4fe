// What the guide to Full Disk Access shows and does while it is open.
//
// Main thread only.

#pragma once

#include "Tallyglass/Screens/AccessGuide/AccessGuideContent.h"
#include "Tallyglass/Screens/Context/ViewModel.h"

#include <QProperty>
#include <QUrl>
#include <memory>

namespace tallyglass {

class HelperWait;

class AccessGuideViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(bool forHelper MEMBER m_forHelper NOTIFY forHelperChanged)
    Q_PROPERTY(bool isOpen READ isOpen WRITE setOpen NOTIFY isOpenChanged)
    Q_PROPERTY(bool didCopyPath READ didCopyPath NOTIFY didCopyPathChanged)
    Q_PROPERTY(tallyglass::AccessGuideContent content READ content NOTIFY contentChanged)
    Q_PROPERTY(QUrl itemUrl READ itemUrl NOTIFY itemUrlChanged)

public:
    static constexpr double copiedSeconds = 2; ///< how long the button tells that the path was copied

    explicit AccessGuideViewModel(QObject* parent = nullptr);
    ~AccessGuideViewModel() override;

    [[nodiscard]] AccessGuideContent content() const { return m_content; }
    [[nodiscard]] bool didCopyPath() const { return m_didCopyPath; }
    /// The file to be dragged.
    [[nodiscard]] QUrl itemUrl() const;

    /// While the guide is open it waits for the helper, if it is the helper's.
    [[nodiscard]] bool isOpen() const { return m_isOpen; }
    void setOpen(bool open);

    Q_INVOKABLE void openSettings();
    /// Shows this program in the file manager, or copies the helper's path.
    Q_INVOKABLE void help();

signals:
    void forHelperChanged();
    void itemUrlChanged();
    void isOpenChanged();
    void didCopyPathChanged();
    void contentChanged();

protected:
    void update() override;

private:
    [[nodiscard]] AccessTarget target() const {
        return m_forHelper ? AccessTarget::helper : AccessTarget::app;
    }
    [[nodiscard]] bool isGranted() const;
    void setCopied(bool copied);

    bool m_forHelper = false;
    bool m_isOpen = false;
    bool m_didCopyPath = false;
    std::unique_ptr<Timer> m_copiedTimer;
    std::unique_ptr<HelperWait> m_wait;

    Q_OBJECT_BINDABLE_PROPERTY(AccessGuideViewModel, AccessGuideContent, m_content,
                               &AccessGuideViewModel::contentChanged)
};

} // namespace tallyglass
