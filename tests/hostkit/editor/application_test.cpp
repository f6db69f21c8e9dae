#include "hostapplication.h"

#include "aced.h"
#include "applicationobject.h"
#include "cwinapp.h"
#include "dbdatabase.h"
#include "hosttest.h"
#include "menugroup.h"
#include "undohistory.h"

#include <functional>
#include <string>

namespace {

std::function<void()> body;
void runBody() { body(); }

/// One reference, given back at the end of the scope.
template <typename Interface>
class Held {
public:
    Held() = default;
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() {
        if (m_object) m_object->Release();
    }
    Interface** place() { return &m_object; }
    void** anyPlace() { return reinterpret_cast<void**>(&m_object); }
    Interface* operator->() const { return m_object; }
    Interface* get() const { return m_object; }

private:
    Interface* m_object = nullptr;
};

class ApplicationTest : public hostkit::HostTest {
protected:
    void SetUp() override {
        IDispatch* const object = acedGetAcadWinApp()->GetIDispatch(TRUE);
        ASSERT_EQ(object->QueryInterface(IID_IHostApplication, application.anyPlace()), S_OK);
        object->Release();
        ASSERT_EQ(held(), 1);
    }
    void TearDown() override {
        body = nullptr;
        if (application.get()) (*application.place())->Release();
        *application.place() = nullptr;
        HostTest::TearDown(); // fails where an interface is held still
    }
    int held() { return session.host().application().referencesHeld(); }
    void setScale(double value) {
        hostkit::SystemValue real;
        real.type = RTREAL;
        real.reals[0] = value;
        ASSERT_EQ(session.host().variables().set(L"LTSCALE", real), hostkit::VariableResult::ok);
    }
    void undo() {
        hostkit::UndoReport report;
        ASSERT_EQ(hostkit::undoLastGroup(database(), report), Acad::eOk);
    }
    Held<IHostApplication> application;
};

TEST_F(ApplicationTest, AnInterfaceIsAskedForAndCounted) {
    Held<IUnknown> first, second;
    EXPECT_EQ(application->QueryInterface(IID_IUnknown, first.anyPlace()), S_OK);
    EXPECT_EQ(acedGetAcadWinApp()->GetIDispatch(FALSE)->QueryInterface(IID_IUnknown, second.anyPlace()),
              S_OK);
    EXPECT_EQ(first.get(), second.get()) << "one object has one identity";
    EXPECT_EQ(held(), 3);
    EXPECT_EQ(application->AddRef(), 5u) << "the host holds one itself";
    EXPECT_EQ(application->Release(), 4u);
    void* none = this;
    EXPECT_EQ(application->QueryInterface(IID_IHostDocument, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(application->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(application->get_ActiveDocument(nullptr), E_POINTER);
    EXPECT_EQ(held(), 3);
}

// What was unloaded is gone for all of its objects, which stay good to call.
TEST_F(ApplicationTest, ObjectsOfAMenuKnowWhetherItIsLoaded) {
    auto added = std::make_shared<hostkit::MenuGroup>(hostkit::MenuGroup{L"Rebar"});
    added->toolbars.push_back(std::make_shared<hostkit::Toolbar>(hostkit::Toolbar{L"TB", L"Stirrups"}));
    session.host().menuGroups().add(std::move(added));
    Held<IHostMenuGroups> groups;
    Held<IHostMenuGroup> group, missing;
    Held<IHostToolbars> toolbars;
    Held<IHostToolbar> toolbar, gone;
    ASSERT_EQ(application->get_MenuGroups(groups.place()), S_OK);
    for (const LONG index : {-1, 1}) EXPECT_EQ(groups->Item(index, missing.place()), E_INVALIDARG);
    ASSERT_EQ(groups->Item(0, group.place()), S_OK);
    ASSERT_EQ(group->get_Toolbars(toolbars.place()), S_OK);
    ASSERT_EQ(toolbars->Item(0, toolbar.place()), S_OK);
    BSTR name = nullptr;
    EXPECT_EQ(toolbar->get_Name(&name), S_OK);
    EXPECT_EQ(std::wstring(name, SysStringLen(name)), L"Stirrups");
    SysFreeString(name);
    VARIANT_BOOL visible = 7;
    EXPECT_EQ(toolbar->put_Visible(VARIANT_TRUE), S_OK);
    EXPECT_EQ(toolbar->get_Visible(&visible), S_OK);
    EXPECT_EQ(visible, VARIANT_TRUE);
    EXPECT_TRUE(session.host().menuGroups().remove(L"REBAR"));
    EXPECT_EQ(group->get_Name(&name), E_FAIL);
    EXPECT_EQ(toolbars->Item(0, gone.place()), E_FAIL);
    EXPECT_EQ(toolbar->put_Visible(VARIANT_FALSE), E_FAIL);
}

TEST_F(ApplicationTest, MarksGroupWhatIsDoneBetweenThem) {
    session.host().commands().addCommand(L"T", L"GO", nullptr, ACRX_CMD_MODAL, runBody);
    Held<IHostDocument> document;
    ASSERT_EQ(application->get_ActiveDocument(document.place()), S_OK);
    setScale(2.0);
    EXPECT_EQ(document->StartUndoMark(), S_OK);
    setScale(3.0);
    EXPECT_EQ(document->StartUndoMark(), S_OK);
    EXPECT_EQ(document->EndUndoMark(), S_OK);
    setScale(4.0);
    EXPECT_EQ(document->EndUndoMark(), S_OK);
    EXPECT_EQ(document->EndUndoMark(), E_FAIL);
    undo();
    EXPECT_EQ(database().ltscale(), 2.0) << "both changes are one step";

    // Over the ends of commands: started in one, ended in another.
    body = [&] {
        setScale(5.0);
        EXPECT_EQ(document->StartUndoMark(), S_OK);
    };
    session.host().run(L"GO");
    body = [&] {
        EXPECT_EQ(document->EndUndoMark(), S_OK);
        setScale(7.0);
    };
    session.host().run(L"GO");
    undo();
    EXPECT_EQ(database().ltscale(), 2.0);

    giveLockBack();
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    Held<IHostDocument> none;
    EXPECT_EQ(application->get_ActiveDocument(none.place()), E_FAIL) << "no document is open";
    ASSERT_EQ(session.host().newDocument(), Acad::eOk);
    EXPECT_EQ(document->StartUndoMark(), E_FAIL) << "another document is not that one";
}

TEST(Application, ObjectsMayOutliveTheirHost) {
    EXPECT_EQ(acedGetAcadWinApp(), nullptr);
    Held<IHostApplication> application;
    Held<IHostMenuGroups> groups;
    Held<IHostDocument> document;
    {
        hostkit::TestHost session;
        acedGetAcadWinApp()->GetIDispatch(FALSE)->QueryInterface(IID_IHostApplication,
                                                                 application.anyPlace());
        ASSERT_EQ(application->get_MenuGroups(groups.place()), S_OK);
        ASSERT_EQ(application->get_ActiveDocument(document.place()), S_OK);
        EXPECT_EQ(session.host().application().referencesHeld(), 3);
    }
    LONG count = 0;
    Held<IHostMenuGroups> others;
    EXPECT_EQ(groups->get_Count(&count), E_FAIL);
    EXPECT_EQ(document->EndUndoMark(), E_FAIL);
    EXPECT_EQ(application->get_MenuGroups(others.place()), E_FAIL);
}

} // namespace
