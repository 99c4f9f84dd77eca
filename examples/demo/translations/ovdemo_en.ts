<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>OVBoxBlur</name>
    <message>
        <source>Box Blur</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVBrightnessContrast</name>
    <message>
        <source>Brightness/Contrast</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVDemoColour</name>
    <message>
        <source>Working &amp;Colour Profile</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No RGB profiles in %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVDemoHost</name>
    <message>
        <source>The demo host editor of the core library.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Process the images without a window.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write the results into this folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Format of the results.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save a picture of the window once the images are open.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit once the images are open (and adjusted).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file does not exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No reader for the format &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file could not be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot create the output folder %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot write %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 files done, %3 failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) could not be read or written.</source>
        <translation>
            <numerusform>%n file could not be read or written.</numerusform>
            <numerusform>%n files could not be read or written.</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fil&amp;ter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loading %1...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 did not load: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plug-ins: %1 loaded (%2), %3 failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The value of &quot;%1&quot; is not a whole number.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No adjustment takes &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The image could not be saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No writer for the format &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>core demo editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the library&apos;s diagnostics in the headless mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Headless: send this feedback to the collector and print the reply.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feedback reply: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--%1 takes a whole number from %2 to %3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply an adjustment, e.g. brightness=20 or greyscale; an unknown name lists them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Headless: files worked on at once (default: %1, the processor&apos;s threads).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Headless: take the files of subfolders too.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quality of lossy results, 0 to 100.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refuse images larger than this (default: %1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load this plug-in library too (may be repeated).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images to open; headless, also folders of images.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>--max-megapixels takes a number above 0.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The image is %1x%2 pixels, above the limit of %3 megapixels (--max-megapixels).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 files/s, %2 MP/s, about %3 s left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopped by signal %1: %2 of %3 files not started.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No adjustment is named &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes %2 to %3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 takes no &quot;%2&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adjustments (--adjust NAME, NAME:PARAMETER=VALUE,... or PARAMETER=VALUE,...):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 to %3, default %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopping once the files in flight are written; stop again to discard them.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVDemoLists</name>
    <message>
        <source>No recent files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Favourite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>As it is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fit into:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Any</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Largest file:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVDemoLook</name>
    <message>
        <source>The change takes effect at the next start.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Theme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Background colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Swap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Swap the foreground and background colours</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVDemoStatistics</name>
    <message>
        <source>Send Usage &amp;Statistics</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send &amp;Feedback...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send Feedback</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What would you like to tell us?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No reply from %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feedback</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVDemoWindow</name>
    <message>
        <source>core demo editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Adjustments</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The demo host editor of the core library.

%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tool</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opening images...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 x %3, read by %4 in %5 ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot save %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 could not be written: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exported %1 (%2 x %3)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVFilterContainer</name>
    <message>
        <source>Box Blur (small)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Box Blur (large)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVGreyscale</name>
    <message>
        <source>Grey-scale</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVImageIOReader</name>
    <message>
        <source>The file is damaged: its data ends early.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVSampleBrushes</name>
    <message>
        <source>Basic brushes</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OVToolsContainer</name>
    <message>
        <source>Hand</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drag the image to scroll it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click to zoom in, Alt-click to zoom out.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Colour Picker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click to take the foreground colour from the image.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point sample</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>3 by 3 average</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>5 by 5 average</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll all windows</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
