#include "contract/known_differences.h"
#include "desktop/desktop_fixture.h"

namespace karvel {
namespace {

class Modal : public DesktopTest {
 protected:
  Modal() { show(owner_); }

  static constexpr std::array<ControlRow, 0> kNoControls{};
  const FormTable ownerTable_{"OwnerForm", "owner", 100, 50, false, kNoControls};
  Form owner_{ownerTable_};
};

TEST_F(Modal, ReturnsWhenTheDialogIsClosedByItsHandler) {
  form_.control("Button", 1).onClick = [&] { form_.markClosed(); };
  bool blocked = false;
  user_.soon([&] {
    blocked = User::look(User::window(owner_)).blocked && !User::look(window()).blocked;
    user_.press(Key::kEscape);
  });
  desktop_->showModal(form_, owner_);
  EXPECT_TRUE(blocked);
  EXPECT_TRUE(form_.closed());
  EXPECT_FALSE(User::look(User::window(owner_)).blocked);
}

TEST_F(Modal, ReturnsWhenTheCloseBoxIsUsed) {
  user_.soon([&] { user_.useCloseBox(window()); });
  desktop_->showModal(form_, owner_);
  EXPECT_TRUE(form_.closed());
}

TEST_F(Modal, AnOwnerThatIsMinimisedUnderItsDialogIsNotGone) {
  user_.soon([&] {
    user_.minimize(User::window(owner_));
    user_.soon([&] { form_.markClosed(); });
  });
  desktop_->showModal(form_, owner_);
  EXPECT_EQ(owner_.windowState(), WindowState::kNormal);
}

TEST_F(Modal, AMessageBoxShowsTheTextAsItIs) {
  std::optional<Message> shown;
  user_.soon([&] {
    shown = User::message();
    user_.press(Key::kEnter);
  });
  desktop_->messageBox(owner_, "集計管理", "<i>Q&A: 店舗コードが不明です。　　");
  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->title, "集計管理");
  EXPECT_EQ(shown->text, "<i>Q&A: 店舗コードが不明です。　　");
  EXPECT_TRUE(shown->critical);
}

TEST_F(Modal, QuitEndsEveryLoop) {
  int ended = 0;
  user_.soon([&] {
    user_.soon([&] {
      user_.soon([&] { desktop_->quit(); });
      desktop_->messageBox(owner_, "t", "t");
      ++ended;
    });
    desktop_->showModal(form_, owner_);
    ++ended;
  });
  desktop_->run();
  EXPECT_EQ(ended, 2);
  EXPECT_FALSE(form_.closed());
  // Nothing waits any more.
  desktop_->messageBox(owner_, "t", "t");
  desktop_->showModal(form_, owner_);
  desktop_->run();
}

class Menu : public Modal {
 protected:
  MenuItem send_{"手動&転送"};
  MenuItem line_{"-"};
  MenuItem exit_{"常駐停止", false};
  std::vector<MenuItem*> items_{&send_, &line_, &exit_};
};

TEST_F(Menu, RunsTheChosenEntryAfterClosing) {
  bool menuWasOpen = true;
  int sent = 0;
  send_.onClick = [&] {
    ++sent;
    menuWasOpen = !User::menu().empty();
  };
  std::vector<MenuLine> shown;
  user_.soon([&] {
    shown = User::menu();
    user_.press(Key::kDown);
    user_.press(Key::kEnter);
  });
  desktop_->popupMenu(owner_, items_);
  EXPECT_EQ(shown, (std::vector<MenuLine>{{"手動&転送"}, {"-"}, {"常駐停止", false}}));
  EXPECT_EQ(sent, 1);
  EXPECT_FALSE(menuWasOpen);
}

TEST_F(Menu, GivesWayToAMessageBox) {
  bool menuWasOpen = true;
  user_.soon([&] {
    user_.soon([&] {
      menuWasOpen = !User::menu().empty();
      user_.press(Key::kEnter);
    });
    desktop_->messageBox(owner_, "t", "t");
  });
  desktop_->popupMenu(owner_, items_);
  EXPECT_EQ(menuWasOpen, differsHere(Difference::kMenuEndsLate));
  EXPECT_TRUE(User::menu().empty());
}

TEST_F(Menu, EndsWithTheProgram) {
  user_.soon([&] { desktop_->quit(); });
  desktop_->popupMenu(owner_, items_);
  EXPECT_TRUE(User::menu().empty());
}

}  // namespace
}  // namespace karvel
