#include "contract/ports.h"
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

TEST_F(Modal, BlocksItsOwnerUntilItIsClosed) {
  user_.soon([&] {
    EXPECT_FALSE(User::look(User::window(owner_)).isEnabled);
    EXPECT_TRUE(User::look(window()).isEnabled);
    // A desktop's "show desktop" minimises it all the same.
    user_.minimize(User::window(owner_));
    user_.soon([&] { user_.useCloseBox(window()); });
  });
  desktop_->showModal(form_, owner_);
  EXPECT_TRUE(form_.closed());
  EXPECT_TRUE(User::look(User::window(owner_)).isEnabled);
  EXPECT_EQ(owner_.windowState(), WindowState::kNormal);
}

TEST_F(Modal, AMessageBoxShowsTheTextAsItIs) {
  user_.soon([&] {
    EXPECT_EQ(User::message(), "!集計管理: <i>Q&A: 店舗コードが不明です。　　");
    user_.press(Key::kEnter);
  });
  desktop_->messageBox(owner_, "集計管理", "<i>Q&A: 店舗コードが不明です。　　");
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
  void open() { desktop_->popupMenu(owner_, {&send_, &line_, &exit_}); }

  int sent_ = 0;
  MenuItem send_{"手動&転送", true, [this] {
                   ++sent_;
                   EXPECT_EQ(User::menu(), "");
                 }};
  MenuItem line_{"-"};
  MenuItem exit_{"常駐停止", false};
};

TEST_F(Menu, RunsTheChosenEntryAfterClosing) {
  user_.soon([&] {
    EXPECT_EQ(User::menu(), "手動&転送|-|(常駐停止)|");
    user_.press(Key::kDown);
    user_.press(Key::kEnter);
  });
  open();
  EXPECT_EQ(sent_, 1);
}

TEST_F(Menu, EndsWhenThePanelComesBackOrAMessageOpensOrTheProgramEnds) {
  const std::function<void()> ends[] = {
      [&] { desktop_->removeTrayIcon(); },
      [&] {
        user_.soon([&] {
          EXPECT_TRUE(User::menu().empty() || isKnown(Difference::kMenuEndsLate));
          user_.press(Key::kEnter);
        });
        desktop_->messageBox(owner_, "t", "t");
      },
      [&] { desktop_->quit(); },
  };
  for (const auto& end : ends) {
    // Chooses from a menu that stays.
    const auto impatience = desktop_->createTimer(std::chrono::seconds(3), [this] {
      user_.press(Key::kDown);
      user_.press(Key::kEnter);
    });
    impatience->setEnabled(true);
    user_.soon(end);
    open();
    EXPECT_EQ(User::menu(), "");
  }
  EXPECT_EQ(sent_, 0);
}

}  // namespace
}  // namespace karvel
