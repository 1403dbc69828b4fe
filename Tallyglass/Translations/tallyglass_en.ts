<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>AboutSheet</name>
    <message>
        <source>Tallyglass %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Makes this computer&apos;s Time Machine backups visible.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AccessGuide</name>
    <message>
        <source>Open Full Disk Access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The button below opens System Settings › Privacy &amp; Security › Full Disk Access.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag Tallyglass into the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag the icon above straight onto the list — or click + and choose it from Applications. If it&apos;s already listed, just turn its switch on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn its switch on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>macOS may ask you to quit and reopen the app — that&apos;s expected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Come back here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The app unlocks on its own the moment access is granted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Full Disk Access &amp; reveal the helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The button below opens the settings pane and a Finder window with tallyglass-helper selected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag tallyglass-helper into the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag the icon above — or the file from the Finder window that opens — onto the list. Its folder is hidden, so the + picker can&apos;t reach it; dragging is the way.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Come back and press Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Per-backup sizes appear within a moment; otherwise they arrive on the helper&apos;s next run.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give Tallyglass access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>macOS won&apos;t ask for this, so it&apos;s added by hand — once. It takes about a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reveal app</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give the helper access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Per-backup sizes come from a file only the helper can read. This grant is separate from the app&apos;s.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Illustration: drag %1 into the Full Disk Access list and turn its switch on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Access granted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for access…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ActivityCard</name>
    <message>
        <source>Stopping…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backing up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 files/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 copied</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>about %1 left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preparing — %1 items found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preparing…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Alert</name>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AlertSheet</name>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Backfill</name>
    <message>
        <source>Unknown date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not compared yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>being compared</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ready</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>All %n comparisons ready</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n comparisons ready</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Down to depth %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All folders</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, with extended attributes and ownership</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, by size and date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pausing…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comparing %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Comparing %1 and %n more</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Less than a minute left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About %1 left</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Prepare all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prepare the rest</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BackfillCard</name>
    <message>
        <source>All backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comparisons of neighbouring backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One mark for each backup and the next, filled when their comparison is ready. Choose one to see it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compare each new backup when it ends, once all others are ready</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BackupButton</name>
    <message>
        <source>Stop Backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back Up Now</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BackupChanges</name>
    <message>
        <source>Opening the cache of results…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of results received</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This backup is on a network destination, so comparing it reads both backups over the network. It can take several minutes — the result is cached, so opening it again is instant.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>this backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On disk</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 logical</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Added</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Modified</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Removed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Net</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time Machine&apos;s own totals for this backup. The list below is a browsable diff of size and timestamp changes, pulled on demand — open a folder to fetch what&apos;s inside. It only covers the folders you&apos;ve opened, so it won&apos;t add up to the total above.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Showing the first %1 of %2. Narrow the filter to see more.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No changes match the current filters.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing changed between these two backups.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is the oldest backup, so there is no earlier one to compare it against.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BackupChangesProgress</name>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BackupChangesResults</name>
    <message>
        <source>Filter paths</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Content changes only</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BackupChangesView</name>
    <message>
        <source>Changes in this backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Seeing file changes needs Full Disk Access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tmutil cannot read backup contents without it.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CapacityRing</name>
    <message>
        <source>nearly full</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>running low</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>plenty free</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Destination capacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 percent used, %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ChangeMenu</name>
    <message>
        <source>Copy Path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show in Older Backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show in Newer Backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trace This File</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ChangeRow</name>
    <message>
        <source>in %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ChangeTreeLine</name>
    <message>
        <source>Loading folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ChangeTreeList</name>
    <message>
        <source>Collapse folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Expand folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ChangeTreeView</name>
    <message>
        <source>Changed files</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Compare</name>
    <message>
        <source>Depth: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Working…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Added</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Modified</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Removed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Net</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>size change</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This comparison did not finish, so the results below are incomplete.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Limited to depth %1 — changes nested deeper are not listed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 changes are metadata only (timestamps, extended attributes).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No changes match the current filters.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Showing the first 1,000 of %1. Narrow the filter to see more.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CompareFilter</name>
    <message>
        <source>Filter paths</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Content changes only</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ComparePicker</name>
    <message>
        <source>Compare two backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking for backups…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>From</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Also compare extended attributes and ownership</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off by default. tmutil normally compares extended attributes, which costs an extra round-trip per file and reports churn nobody acts on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No limit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each level is a network round-trip — deeper is slower.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compare</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Re-run</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CompareResults</name>
    <message>
        <source>Changes</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CompareSummary</name>
    <message>
        <source>Summary</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CompareView</name>
    <message>
        <source>Compare</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comparing backups needs Full Disk Access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tmutil cannot read backup contents without it, so there is nothing to diff.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConfigurationCard</name>
    <message>
        <source>Configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Excluded from backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Automatic backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interval</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Requires AC power</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Yes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last verification</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DashboardView</name>
    <message>
        <source>No backup destination</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time Machine has not been configured on this Mac.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading the Time Machine settings…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DestinationHeader</name>
    <message>
        <source>Encrypted destination</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Used</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Free</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>since %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DiagnosticsCard</name>
    <message>
        <source>Diagnostics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saves raw tmutil output to a folder on your Desktop. Read-only — nothing in your backups is modified.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Capture Diagnostics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reveal Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Benchmark comparison strategies</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Times property sets and concurrency levels, each against its own disjoint backup pairs so every measurement starts cold. Takes a few minutes and reads only — nothing is modified.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run Benchmark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy report</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exit code %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Succeeded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Of the sets that also look at dates, “%1” was the fastest here: %2 s per pair. Size alone misses changes that keep a file&apos;s size. One run can&apos;t settle small differences.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Without Full Disk Access most probes will record a permission error.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 pairs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved to the diagnostics folder as benchmark.txt.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExclusionMenu</name>
    <message>
        <source>Copy Path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop tracking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Del</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExclusionRow</name>
    <message>
        <source>Excluded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop tracking this item here. Does not change its exclusion.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop tracking</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Exclusions</name>
    <message>
        <source>Inherited</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System rule</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Include</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exclude</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Excluding…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Including…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExclusionsView</name>
    <message>
        <source>Exclusions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What&apos;s left out of backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Excluding an item marks it with an extended attribute that Time Machine checks. The item&apos;s contents are never modified, and the change takes effect on the next backup.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop files or folders to track them here</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExclusionsViewModel</name>
    <message>
        <source>Choose files or folders to manage</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FDADragIllustration</name>
    <message>
        <source>Drag this into the Full Disk Access list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Full Disk Access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backups</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FeedDownload</name>
    <message>
        <source>The server took too long.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The answer is too long to be a list of versions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server leads to an address without encryption.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server has no list of versions there.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileHistory</name>
    <message>
        <source>Unknown date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Distinct versions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>across %1 backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Present in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>latest version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exporting %1: %2 of %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Exporting %1: %2, %n items</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Scanning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checked %1 backups. Verify the path — it should be the path on your Mac, not inside the backup.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>kept in 1 backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>kept in %1 backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> · modified %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: version %2 of %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter a path as it appears on your Mac, for example %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2, latest</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileHistoryModel</name>
    <message>
        <source>Choose a file to trace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export this version out of the backup</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileHistoryResults</name>
    <message>
        <source>Versions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Presence in backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One mark for each backup, hollow where the item is missing. Choose one to see its version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time Machine carries unchanged files forward without copying them, so consecutive backups holding the same version are grouped together.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileHistorySearch</name>
    <message>
        <source>Trace a file through every backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recent paths</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileHistoryView</name>
    <message>
        <source>File History</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File history needs Full Disk Access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading a file&apos;s versions means looking inside each backup.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not found in any backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop to trace the item</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FilePanelDialog</name>
    <message>
        <source>Qt can&apos;t make the dialog. A part of Qt that it needs may be missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FilePanels</name>
    <message>
        <source>The dialog for choosing files can&apos;t be shown</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FullDiskAccessGuide</name>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HealthCard</name>
    <message>
        <source>Suspected failed backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time Machine attempted a backup at these times but no backup followed. macOS records the attempt but does not surface the failure.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Longer than usual</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last backup was skipped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last backup didn&apos;t complete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (result code %2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time Machine recorded result code %1 for the most recent backup to this destination. This code isn&apos;t in our catalogue, so it confirms a problem without naming the cause.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>· %1 → %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last backup %1 · typically every %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>· %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HelperSetup</name>
    <message>
        <source>Remove Tallyglass’s helper?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This unloads and deletes the privileged background helper and the files it installed. You’ll be asked for your administrator password, and per-backup sizes will stop working unless you reinstall.

Afterward, quit and drag Tallyglass to the Trash to finish.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove Helper…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Helper removed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The background helper and its files are gone. Quit Tallyglass and drag it from your Applications folder to the Trash to finish removing it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn’t remove the helper</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>JobControls</name>
    <message>
        <source>Running for %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LockedNotice</name>
    <message>
        <source>Show me how</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ManagedItems</name>
    <message>
        <source>Managed items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Folder…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Updating exclusions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Items you&apos;ve added here. macOS offers no way to list every excluded item on a disk, so this is a working list rather than a complete inventory.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing tracked yet. Use Add Items to choose files or folders.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MenuBar</name>
    <message>
        <source>Last backup %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backing up… %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back Up Now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Tallyglass</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support Tallyglass…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyglass — backup problem</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyglass — backups need attention</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyglass — backups healthy</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RootView</name>
    <message>
        <source>Overview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compare</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File History</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exclusions</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Shell</name>
    <message>
        <source>Lite mode</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Sidebar</name>
    <message>
        <source>Sidebar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lite mode</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SplitHandle</name>
    <message>
        <source>Width of the sidebar</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SupportCard</name>
    <message>
        <source>Support the project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyglass is free and independent. If it has spared you a backup scare, you can chip in toward its upkeep — nothing is locked behind it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support development</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apple Pay &amp; cards · secure checkout by Stripe</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SupportViewModel</name>
    <message>
        <source>Opens a secure Stripe checkout in your browser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set your Stripe Payment Link in Support</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SystemRules</name>
    <message>
        <source>System-wide rules</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Path rules stored in Time Machine&apos;s own settings. Changing these requires administrator privileges, which Tallyglass does not request — use System Settings → General → Time Machine → Options.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Timeline</name>
    <message>
        <source>Grant the helper Full Disk Access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The helper is installed but still needs Full Disk Access — Time Machine backups are protected even from root. Grant it and the sizes appear on their own.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Per-backup sizes need a one-time helper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time Machine records each backup&apos;s size in a file only root can read (with Full Disk Access). A small signed helper reads it and copies it somewhere Tallyglass can. It only reads your backup, and uninstalls cleanly.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Longer than usual</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backup without a value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Typical: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Typical</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>typical cadence</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time gap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backup timeline, %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adjust to move between backups, then activate to see file changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>hours since previous backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>on-disk bytes changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>files changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1h</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On-disk size of what each backup changed, from Time Machine&apos;s own records — no scanning.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files each backup copied, from Time Machine&apos;s own records — no scanning.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>★ Initial full backup (%1, %2) has no bar: beside it the others would vanish.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 since the previous backup, longer than usual</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 since the previous backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 files changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>First backup on this destination</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not in the backup manifest</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial full backup · %1 · %2 on disk · %3 of data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 · %2 on disk · %3 of data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One of %1 in this bar. Zoom in to tell them apart.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click to see file changes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click: needs Full Disk Access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initial full backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Suspected failed backup</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TimelineHelperCard</name>
    <message>
        <source>Copied — run it in Terminal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show me how</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TimelineView</name>
    <message>
        <source>Backup timeline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not enough history</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>At least two backups are needed to chart cadence.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show all</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TopBarActions</name>
    <message>
        <source>Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Menu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About Tallyglass</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Uninstall Tallyglass…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UnlockCard</name>
    <message>
        <source>Unlock backup contents</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Everything above works without permission. These need Full Disk Access:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show me how</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Browse the files inside any backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compare two backups and see exactly what changed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Track a single file&apos;s history across every backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Visualise which folders consume the most space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Permission state could not be determined on this system.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdaterController</name>
    <message>
        <source>The server’s answer isn’t a list of versions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyglass is up to date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 is the newest there is.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn’t check for updates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tallyglass %1 is available</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The download opens in your browser, from %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Download</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Later</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VersionMenu</name>
    <message>
        <source>Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a Read-Only Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Return</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show in Backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy Path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compare with the Version Before</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VersionRow</name>
    <message>
        <source>LATEST</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
