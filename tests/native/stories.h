// The stories that the driver plays, and how they tell what held.
#pragma once

#include <string>
#include <vector>

namespace native {

using Texts = std::vector<std::string>;

void Check(bool held, const std::string& what);

// The browsers' traces, from all of each tab and from a start with Windows. Leaves its log in C:\browsers-log.txt.
void BrowserStory();
// A day with the installed program, whose copy somebody else starts: what browsing leaves, for each of the other two;
// the wizard, a run of the watcher and the Boss Key; and, after Windows started the program by itself, its run, an
// audit of the cache that lies there, and the end by the menu.
void DayOfBrowsing();
void DayUntilBoot();
void DayAfterBoot();
// Second copies, odd windows of others, and ends of the process in the middle of a run.
void EndsStory();
// The pages of C:\setup.exe and of the uninstaller, by their buttons, where no program is installed.
void InstallationStory();
// Internet Explorer's traces on a real Windows: its URL cache, cookies and the keep list, the helpers, the
// registry, and what goes at the next boot. Leaves the log and count of its runs in C:\internet-log.txt.
void InternetStory();
// What the boot after that story did.
void InternetStoryAfterBoot();
// Names that Windows bends for programs of one byte a letter, and paths that are long. Plays on the program whose
// manifest does not ask for UTF-8, as Windows before version 1903 of 10 takes every one.
void NamesStory();
// The half of the program that lives in the tray: Boss Key, icon and menus, wizard, watcher, guards. Leaves the log
// in C:\resident-log.txt.
void ResidentStory();
// The thumbnail audit: scan, page, pictures, questions, removal. Finds its caches below C:\caches and the pictures in
// them in C:\pictures; leaves the log in C:\thumbs-log.txt. Prints how long the window took at most to answer a
// message.
void ThumbsStory();
// The windows themselves: pages, keys, questions, and the end of the Windows session.
void WindowStories();

}  // namespace native
