--TEST--
The module and its one function, as Reflection shows them
--EXTENSIONS--
template
--FILE--
<?php
echo new ReflectionFunction('template');
$module = new ReflectionExtension('template');
foreach (['getName', 'getVersion', 'getINIEntries', 'getConstants', 'getClasses', 'getDependencies'] as $getter) {
    echo $getter, ' ', json_encode($module->$getter()), "\n";
}
echo implode(' ', array_keys($module->getFunctions())), "\n";
?>
--EXPECT--
Function [ <internal:template> function template ] {

  - Parameters [3] {
    Parameter #0 [ <required> string $fileName ]
    Parameter #1 [ <required> array $userData ]
    Parameter #2 [ <optional> bool $string_mode = false ]
  }
  - Return [ ?string ]
}
getName "template"
getVersion "2.0.0"
getINIEntries []
getConstants []
getClasses []
getDependencies []
template
