// The frame around the screens, as QML shows it: which section is picked, and what the frame says.
//
// Main thread only.

#pragma once

#include "Tallyglass/Screens/ModelView.h"
#include "Tallyglass/Screens/ShellContent.h"

#include <QtQml/qqmlregistration.h>

#include <QVariantList>

namespace tallyglass {

class ShellView : public ModelView {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QVariantList sections READ sections CONSTANT)
    Q_PROPERTY(int sectionIndex READ sectionIndex WRITE setSectionIndex NOTIFY sectionIndexChanged)
    Q_PROPERTY(tallyglass::ShellContent content READ content NOTIFY contentChanged)

public:
    explicit ShellView(QObject* parent = nullptr);

    [[nodiscard]] QVariantList sections() const { return m_sections; }
    [[nodiscard]] int sectionIndex() const { return m_sectionIndex; }
    /// Keeps the present one when there is no such section.
    void setSectionIndex(int index);
    [[nodiscard]] ShellContent content() const { return m_content; }

signals:
    void sectionIndexChanged();
    void contentChanged();

protected:
    void update() override;

private:
    QVariantList m_sections;
    int m_sectionIndex = 0;
    ShellContent m_content;
};

} // namespace tallyglass
