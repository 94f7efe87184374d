#pragma once

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "component/clsMain.h"
#include "tests/native/adversary/FaultyDriver.h"
#include "tests/native/adversary/Stage.h"
#include "tests/native/randomuser/Book.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/ScriptedScreen.h"

namespace ktrv::tests {

/// A user and a host who act at random, the same way for the same seed, on two databases. A model
/// of each database is updated by what was confirmed; database and window must agree with it.
///
///   RandomUser user(7);
///   for (...) user.Step();
///   EXPECT_EQ(user.Wrong(), "");
class RandomUser {
 public:
  struct Counts {
    int Steps = 0;
    int Dialogs = 0;
    int Confirmed = 0;
    int Nested = 0;
    int Faults = 0;
    int Deletions = 0;
    int Releases = 0;
  };

  explicit RandomUser(unsigned seed);
  ~RandomUser();
  RandomUser(const RandomUser&) = delete;
  RandomUser& operator=(const RandomUser&) = delete;

  void Step();
  /// Compares models, databases and window. \return the differences and the last actions; empty if
  /// all agree
  std::string Check();
  /// Ends the component. \return what was not released; empty if all was
  std::string Close();
  const Counts& Counted() const { return counts_; }

 private:
  struct Place {
    SampleBook Database;
    Book Wanted = Book::Read(Database.ConnectionString());
  };
  /// Answers and chooses at random.
  class Screen final : public ScriptedScreen {
   public:
    explicit Screen(RandomUser& user) : user_(user) {}
    std::int16_t ShowMessage(StringView text, StringView title, std::int32_t style) override;
    void ShowMenu(controls::Form& form, controls::Menu& menu, std::optional<Point> at) override;

   private:
    RandomUser& user_;
  };

  int Any(int count);
  bool Chance(int percent) { return Any(100) < percent; }
  String AnyText();
  template <class Map>
  String AnyId(const Map& map);
  void Note(std::string what);
  void Complain(const std::string& what);
  void Do(const std::function<void()>& act);

  Place& PlaceOf(StringView connectionString);
  /// Dialogs that are opened by the act work on this database.
  void On(Place& place, const std::function<void()>& act);

  void ExpectModal();
  void Play(controls::Form& form);
  void Poke(controls::Form& form);
  void PokeGrid(controls::FlexGrid& grid);
  void Confirm(controls::Form& form, const std::function<bool()>& press);
  bool Press(controls::Form& form, controls::CommandButton& ok);
  void ConfirmContact(forms::frmNewContact& dialog, const forms::ContactFields::Entries& before,
                      const String& companion);
  void ConfirmGroup(forms::frmGroupsNew& dialog);
  void ConfirmFolder(forms::frmSelectFolder& dialog);
  /// The id that is new in the database; nothing, with a complaint, unless there is exactly one.
  template <class Map>
  std::optional<String> NewId(const Map& wanted, const Map& stored);

  void Begin();
  void HostActs();
  void Release();
  forms::frmAddressBook* Window();
  void WindowActs();
  void RememberDeletion(StringView question);
  void TakeDeletion(StringView question, std::int16_t answer);
  void Complete();
  void EndFault();

  std::mt19937 random_;
  Place first_;
  Place second_;
  FaultyDriver driver_{SampleBook::Driver()};
  Screen screen_{*this};
  FakeOperatingSystem system_;
  std::function<void(std::function<void()>)> post_ = screen_.Dispatcher.Post();
  Session session_;
  std::unique_ptr<Dialogs> dialogs_;
  std::unique_ptr<clsMain> main_;

  std::vector<Place*> working_;
  String companion_;  ///< the group that the contact of the next editor is to become a member of
  int depth_ = 0;     ///< open dialogs
  int hostCalls_ = 0;
  bool armed_ = false;
  bool mayDiffer_ = false;  ///< the outcome of a failure is unknown; the model is read anew
  bool shaken_ = false;     ///< links may be dead, which their next use notices
  bool hasty_ = false;      ///< the user does not wait for the list
  /// A deletion as it was when the user was asked.
  struct Deletion {
    const forms::frmAddressBook* Window;
    std::vector<String> Keys;
    bool AsksAgain;
  };
  std::optional<Deletion> deletion_;
  std::vector<std::string> notes_;
  std::string wrong_;
  Counts counts_;
};

}  // namespace ktrv::tests
