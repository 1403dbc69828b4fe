#include "Tallyglass/Screens/AccessGuideState.h"

#include "Tallyglass/Models/HelperWait.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"

#include <QCoreApplication>

namespace tallyglass {

AccessGuideState::AccessGuideState(QObject* parent) : ModelView(parent) {
    connect(this, &AccessGuideState::surroundingsChanged, this, &AccessGuideState::scheduleUpdate);
}

AccessGuideState::~AccessGuideState() = default;

bool AccessGuideState::isGranted() const {
    return m_forHelper ? !model()->manifest().empty() : model()->fdaStatus() == FDAStatus::granted;
}

void AccessGuideState::update() {
    m_content = accessGuideContent(target(), isGranted(), m_didCopyPath);
}

QUrl AccessGuideState::itemUrl() const {
    if (!m_forHelper)
        return QUrl::fromLocalFile(QCoreApplication::applicationFilePath());
    return m_helperSetup ? QUrl::fromLocalFile(m_helperSetup->helperPath()) : QUrl();
}

void AccessGuideState::setOpen(bool open) {
    if (open == m_isOpen)
        return;
    m_isOpen = open;
    m_wait.reset();
    if (m_isOpen && m_forHelper && m_helperSetup && model()) {
        m_wait = std::make_unique<HelperWait>(*model(), *m_helperSetup);
        m_wait->start();
    }
    emit isOpenChanged();
}

void AccessGuideState::openSettings() {
    if (!m_forHelper)
        model()->openFullDiskAccessSettings();
    else if (m_helperSetup)
        m_helperSetup->openFullDiskAccessAndReveal();
}

void AccessGuideState::help() {
    if (!m_forHelper) {
        model()->revealAppInFinder();
    } else if (m_helperSetup && m_pasteboard) {
        m_pasteboard->setText(m_helperSetup->helperPath());
        setCopied(true);
        m_copiedTimer = model()->makeTimer();
        connect(m_copiedTimer.get(), &Timer::timeout, this, [this] { setCopied(false); });
        m_copiedTimer->start(copiedSeconds);
    }
}

void AccessGuideState::setCopied(bool copied) {
    if (copied == m_didCopyPath)
        return;
    m_didCopyPath = copied;
    emit didCopyPathChanged();
    update();
}

} // namespace tallyglass
