// Every drawing test needs a GUI application for fonts; one is made for the whole run.
#include <QGuiApplication>
#include <gtest/gtest.h>
#include <memory>

namespace {

class QtEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        m_app = std::make_unique<QGuiApplication>(m_argc, m_argv);
    }
    void TearDown() override { m_app.reset(); }

private:
    int m_argc = 1;
    char m_name[10] = "test_draw";
    char *m_argv[2] = {m_name, nullptr};
    std::unique_ptr<QGuiApplication> m_app;
};

const auto *const environment = ::testing::AddGlobalTestEnvironment(new QtEnvironment);

} // namespace
