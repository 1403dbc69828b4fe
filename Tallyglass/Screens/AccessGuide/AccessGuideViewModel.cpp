#include "Tallyglass/Screens/AccessGuide/AccessGuideViewModel.h"

#include "Tallyglass/Models/HelperWait.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"

#include <QCoreApplication>

namespace tallyglass {

AccessGuideViewModel::AccessGuideViewModel(QObject* parent) : ViewModel(parent) {
    connect(this, &AccessGuideViewModel::forHelperChanged, this, &AccessGuideViewModel::scheduleUpdate);
    connect(this, &AccessGuideViewModel::forHelperChanged, this, &AccessGuideViewModel::itemUrlChanged);
    connect(this, &AccessGuideViewModel::contextChanged, this, &AccessGuideViewModel::itemUrlChanged);
}

AccessGuideViewModel::~AccessGuideViewModel() = default;

bool AccessGuideViewModel::isGranted() const {
    return m_forHelper ? !model()->manifest().empty() : model()->fdaStatus() == FDAStatus::granted;
}

void AccessGuideViewModel::update() {
    m_content = accessGuideContent(target(), isGranted(), m_didCopyPath);
}

QUrl AccessGuideViewModel::itemUrl() const {
    if (!m_forHelper)
        return QUrl::fromLocalFile(QCoreApplication::applicationFilePath());
    return context() ? QUrl::fromLocalFile(context()->helperSetup()->helperPath()) : QUrl();
}

void AccessGuideViewModel::setOpen(bool open) {
    if (open == m_isOpen)
        return;
    m_isOpen = open;
    m_wait.reset();
    if (m_isOpen && m_forHelper && context()) {
        m_wait = std::make_unique<HelperWait>(*model(), *context()->helperSetup());
        m_wait->start();
    }
    emit isOpenChanged();
}

void AccessGuideViewModel::openSettings() {
    if (!m_forHelper)
        model()->openFullDiskAccessSettings();
    else
        context()->helperSetup()->openFullDiskAccessAndReveal();
}

void AccessGuideViewModel::help() {
    if (!m_forHelper) {
        model()->revealAppInFinder();
    } else {
        context()->clipboard()->setText(context()->helperSetup()->helperPath());
        setCopied(true);
        m_copiedTimer = model()->makeTimer();
        connect(m_copiedTimer.get(), &Timer::timeout, this, [this] { setCopied(false); });
        m_copiedTimer->start(copiedSeconds);
    }
}

void AccessGuideViewModel::setCopied(bool copied) {
    if (copied == m_didCopyPath)
        return;
    m_didCopyPath = copied;
    emit didCopyPathChanged();
    update();
}

} // namespace tallyglass
