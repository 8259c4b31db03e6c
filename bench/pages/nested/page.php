<h1><?= $title ?></h1>
<?php foreach ($groups as $room => $group): ?>
<section id="<?= $room ?>" class="<?= $group['colour'] ?>">
<h2><?= htmlspecialchars($group['title'], ENT_COMPAT, 'ISO-8859-1') ?></h2>
<?php if ($group['note']): ?><p class="note"><?= $group['note'] ?></p><?php endif ?>
<ul>
<?php foreach ($group['items'] as $key => $item): ?>
<li id="<?= $room ?>-<?= $key ?>" class="<?= $group['colour'] ?>">
<a href="/<?= $room ?>/<?= $key ?>"><?= htmlspecialchars($item['name'], ENT_COMPAT, 'ISO-8859-1') ?></a> <?= $item['price'] ?>

<?php if ($item['new']): ?><em>new</em><?php endif ?>
<?php if ($item['state'] === 'sold'): ?><s>sold</s><?php else: ?><button>buy</button><?php endif ?>
</li>
<?php endforeach ?>
</ul>
</section>
<?php endforeach ?>
