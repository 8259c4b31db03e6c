<h1><?= $title ?></h1>
<table>
<tr><th>Id</th><th>Number</th><th>Name</th><th>Category</th><th>Supplier</th><th>City</th><th>Note</th><th>Price</th><th>Weight</th><th>Stock</th></tr>
<?php foreach ($rows as $row): ?>
<tr>
<td><?= $row['id'] ?></td><td><?= $row['sku'] ?></td><td><?= htmlspecialchars($row['name'], ENT_COMPAT, 'ISO-8859-1') ?></td><td><?= htmlspecialchars($row['category'], ENT_COMPAT, 'ISO-8859-1') ?></td><td><?= htmlspecialchars($row['supplier'], ENT_COMPAT, 'ISO-8859-1') ?></td>
<td><?= htmlspecialchars($row['city'], ENT_COMPAT, 'ISO-8859-1') ?></td><td><?= htmlspecialchars($row['note'], ENT_COMPAT, 'ISO-8859-1') ?></td><td><?= $row['price'] ?></td><td><?= $row['weight'] ?></td><td><?= $row['stock'] ?></td>
</tr>
<?php endforeach ?>
</table>
