<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1">
<context>
    <name>PluginAutoPRM</name>
    <message>
        <source>Looking for a collision-free robot position (attempt %1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;strong&gt;Warning: You may need to cancel this operation and change your settings&lt;/strong&gt;&lt;br&gt;It looks like the robot unable to find a collision-free position.&lt;br&gt;Check that robot joint limits are valid and properly define the collision map in &lt;i&gt;Tools-Collision Map&lt;/i&gt;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calculating collision map:&lt;br&gt;Samples: %1/%2 Edges: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connecting robot position: %1/%2 - Edges: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map is as large as the station can keep: no target can be added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target %1 has joint values that are not numbers: it is not added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adding %1 (%2/%3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Successfully added target: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to add target: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The robot&apos;s joint values are not numbers: its position is not added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adding current robot position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This target (or a nearby target) has already been added.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Successfully added the current robot position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to add current robot position: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target %1 has joint values that are not numbers: it is not used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The joint limits of robot %1 are not numbers a map can be sampled in.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A map needs at least 1 sample; the number of samples is %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A map of %1 samples is too large to be kept in the station. The largest map of this robot has %2 samples.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calculating collision Map...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The collision-free planner ran out of memory: the operation was stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The collision-free planner stopped an operation: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The configurations to link hold joint values that are not numbers.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map is as large as the station can keep: no configuration can be linked to it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The robot is unable to reach the first target. Try to add more targets or increase the number of samples and update the collision map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adding start node</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adding end node</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The robot is unable to reach the second target for program &lt;strong&gt;%1&lt;/strong&gt;. Try to increase the number of samples and update the collision map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is not possible to connect the start and end targets for program &lt;strong&gt;%1&lt;/strong&gt;. Try to increase the number of samples and update the collision map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Creating map...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Program %1 does not contain any movements</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to create program: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The robot was deleted: the running operation was stopped and nothing it computed was kept.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The collision-free planner is busy with another operation. Wait for it to finish or cancel it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid robot: add a robot or load a project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replace map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Operation cancelled:&lt;br&gt;Do you want to replace the previous map even if the operation didn&apos;t complete?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Using Robot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select Robot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of samples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edges per sample</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Robot step (deg)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add selected targets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Information:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Display Samples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Display map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New sample edges</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link selected targets/programs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shorten routes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Using robot: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 samples and %2 edges</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No samples. Select Update Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to open file for writting: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The planner&apos;s settings stored in the station are damaged: the defaults are used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Some of the planner&apos;s settings stored in the station are out of range and were set to their defaults: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map stored for robot %1 cannot be used (%2); it is kept in the station until a new map is computed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map of robot %1 cannot be saved in the station: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collision-free motion planner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vorlik Plugin %1 is being loaded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create collision-free map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link selected targets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link selected programs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select a robot to calculate the automatic path map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selected robot for PRM: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Robot not available to calculate PRM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An edge of the map is not free in the cell as it is now and was taken out of the map. Update the map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 edges of the map are not free in the cell as it is now and were taken out of the map. Update the map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Growing the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Growing the map, round %1:&lt;br&gt;%2 of at most %3 samples added</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grow map on failure by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> samples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check routes against the cell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The planner&apos;s options stored in the station were written by a later version of the planner: they are kept as they are and not used.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
